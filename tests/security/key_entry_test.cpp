// The key boxes' checks: what passes, which message comes first, and what gets selected.

#include <gtest/gtest.h>

#include "tests/support/security_bench.h"

namespace ombrelay {
namespace {

using testing::SecurityBench;
using testing::Shown;

constexpr const char* kKey = "7E1F00C2D94B36A8A8634BD9C2001FE7";
constexpr const char* kLengthMessage = "Length of Key needs to be 32 Hex characters long.";

TEST(KeyEntry, IsHexTrimsTheEndsAndHexValidateOverlooksWhiteSpaceAnywhere) {
  SecurityBench bench(std::nullopt);
  struct Case {
    std::string text;
    bool isHex;
    std::string trimmed;
    bool hexValidate;
  };
  const std::vector<Case> cases = {
      {"", true, "", true},
      {"  0aF9  ", true, "0aF9", true},
      {"0a F9", false, "0a F9", true},
      {"0a\tF9\r\n", false, "0a\tF9\r\n", true},
      {"0aG9", false, "0aG9", false},
      {"-1", false, "-1", false},
      {"0a\xC3\xA9", false, "0a\xC3\xA9", false},
  };
  for (const Case& c : cases) {
    std::string text = c.text;
    EXPECT_EQ(bench.panel.IsHex(text), c.isHex) << '"' << c.text << '"';
    EXPECT_EQ(text, c.trimmed) << "IsHex trims the caller's string";
    EXPECT_EQ(bench.panel.HexValidate(c.text), c.hexValidate) << '"' << c.text << '"';
  }
}

TEST(KeyEntry, ChangeSelectsTheLastBadCharacterAndNothingElse) {
  SecurityBench bench(std::nullopt);
  TextBox& box = bench.panel.txtAuthKey;
  box.Text = "7E1G00 2X";
  bench.panel.txtAuthKey_Change();
  EXPECT_EQ(box.SelStart, 8);
  EXPECT_EQ(box.SelLength, 1);
  // A blank alone passes, so nothing is selected; positions count characters, not bytes.
  box.SelStart = 0;
  box.SelLength = 0;
  box.Text = "7E1F 00";
  bench.panel.txtAuthKey_Change();
  EXPECT_EQ(box.SelLength, 0);
  box.Text =
      "\xC3\xA9"
      "7Z";
  bench.panel.txtAuthKey_Change();
  EXPECT_EQ(box.SelStart, 2);
  EXPECT_TRUE(bench.sim.MessageTexts().empty()) << "typing shows no message";
}

struct KeyBox {
  TextBox AuthMorlin::*box;
  void (AuthMorlin::*validate)(bool&);
  const char* nonHexMessage;
};

TEST(KeyEntry, ValidateChecksTheLengthFirstThenTheDigits) {
  const KeyBox boxes[] = {
      {&AuthMorlin::txtUnsealKey, &AuthMorlin::txtUnsealKey_Validate,
       "Unseal Key has a non hex character."},
      {&AuthMorlin::txtAuthKey, &AuthMorlin::txtAuthKey_Validate, "Key has a non hex character."},
      {&AuthMorlin::txtUnsealKeyNew, &AuthMorlin::txtUnsealKeyNew_Validate,
       "Unseal Key has a non hex character."},
      {&AuthMorlin::txtFullAcclKeyNew, &AuthMorlin::txtFullAcclKeyNew_Validate,
       "Full Access Key has a non hex character."},
      {&AuthMorlin::txtAuthlKeyNew, &AuthMorlin::txtAuthlKeyNew_Validate,
       "Auth Key has a non hex character."},
  };
  const std::string spaced = "7E1F00C2D94B36A8 8634BD9C2001FE7";  // 32 characters, a blank
  for (const KeyBox& k : boxes) {
    SCOPED_TRACE(k.nonHexMessage);
    SecurityBench bench(std::nullopt);
    TextBox& box = bench.panel.*k.box;
    const auto validate = [&](const std::string& text) {
      box.Text = text;
      bench.sim.platform.ClearMessages();
      bool cancel = false;
      (bench.panel.*k.validate)(cancel);
      return cancel;
    };
    EXPECT_FALSE(validate(kKey));
    EXPECT_FALSE(validate(spaced)) << "blanks pass: the length counts them and the digits not";
    EXPECT_TRUE(bench.sim.MessageTexts().empty());
    // Wrong length and a bad digit at once: the length is told.
    for (const std::string& text :
         {std::string(), std::string(kKey).substr(1), std::string(kKey).substr(1) + "XY"}) {
      EXPECT_TRUE(validate(text));
      EXPECT_EQ(testing::Boxes(bench.sim.platform),
                (std::vector<Shown>{{kLengthMessage, MessageStyle::Plain}}));
    }
    box.SelStart = 5;
    box.SelLength = 0;
    EXPECT_TRUE(validate("7E1F00C2D94B36A8A8634BD9C2001FEG"));
    EXPECT_EQ(testing::Boxes(bench.sim.platform),
              (std::vector<Shown>{{k.nonHexMessage, MessageStyle::Plain}}));
    EXPECT_EQ(box.SelStart, 0);
    EXPECT_EQ(box.SelLength, 32) << "the whole text is selected";
  }
}

}  // namespace
}  // namespace ombrelay

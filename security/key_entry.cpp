// Key entry: each key box marks a bad character as it is typed, and will not let the focus go
// while it holds a key that is not 32 hex digits.

#include <algorithm>

#include "security/auth_morlin.h"
#include "security/hex_text.h"
#include "shell/platform.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::size_t kKeyDigits = 32;

bool AllHexDigits(const std::vector<std::string>& characters) {
  return std::ranges::all_of(characters, [](const std::string& c) { return IsHexDigit(c); });
}

}  // namespace

bool AuthMorlin::IsHex(std::string& sStr) const {
  const auto first = sStr.find_first_not_of(' ');
  sStr =
      first == std::string::npos ? "" : sStr.substr(first, sStr.find_last_not_of(' ') - first + 1);
  return AllHexDigits(TextCharacters(sStr));
}

bool AuthMorlin::HexValidate(const std::string& sValue) const {
  std::string copy = sValue;
  std::erase_if(copy, [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
  return AllHexDigits(TextCharacters(copy));
}

void AuthMorlin::KeyBoxChange(TextBox& box) const {
  if (HexValidate(box.Text)) return;
  // Every bad character in turn: the last one stays selected.
  const std::vector<std::string> characters = TextCharacters(box.Text);
  for (std::size_t i = 0; i < characters.size(); ++i) {
    if (!IsHexDigit(characters[i])) {
      box.SelStart = static_cast<int>(i);
      box.SelLength = 1;
    }
  }
}

void AuthMorlin::KeyBoxValidate(TextBox& box, const char* nonHexMessage, bool& Cancel) const {
  if (TextCharacters(box.Text).size() != kKeyDigits) {
    MsgBox("Length of Key needs to be 32 Hex characters long.");
    Cancel = true;
    return;
  }
  if (!HexValidate(box.Text)) {
    MsgBox(nonHexMessage);
    box.SelStart = 0;
    box.SelLength = static_cast<int>(kKeyDigits);
    Cancel = true;
  }
}

void AuthMorlin::txtUnsealKey_Change() {
  KeyBoxChange(txtUnsealKey);
}
void AuthMorlin::txtUnsealKey_Validate(bool& Cancel) {
  KeyBoxValidate(txtUnsealKey, "Unseal Key has a non hex character.", Cancel);
}
void AuthMorlin::txtAuthKey_Change() {
  KeyBoxChange(txtAuthKey);
}
void AuthMorlin::txtAuthKey_Validate(bool& Cancel) {
  KeyBoxValidate(txtAuthKey, "Key has a non hex character.", Cancel);
}
void AuthMorlin::txtUnsealKeyNew_Change() {
  KeyBoxChange(txtUnsealKeyNew);
}
void AuthMorlin::txtUnsealKeyNew_Validate(bool& Cancel) {
  KeyBoxValidate(txtUnsealKeyNew, "Unseal Key has a non hex character.", Cancel);
}
void AuthMorlin::txtFullAcclKeyNew_Change() {
  KeyBoxChange(txtFullAcclKeyNew);
}
void AuthMorlin::txtFullAcclKeyNew_Validate(bool& Cancel) {
  KeyBoxValidate(txtFullAcclKeyNew, "Full Access Key has a non hex character.", Cancel);
}
void AuthMorlin::txtAuthlKeyNew_Change() {
  KeyBoxChange(txtAuthlKeyNew);
}
void AuthMorlin::txtAuthlKeyNew_Validate(bool& Cancel) {
  KeyBoxValidate(txtAuthlKeyNew, "Auth Key has a non hex character.", Cancel);
}

}  // namespace ombrelay

#include "security/sha1_calc.h"

#include <algorithm>
#include <array>

#include "security/hex_text.h"
#include "security/sha1_hex.h"
#include "shell/numeric.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kMessageBytes = 20;
constexpr std::int16_t kKeyAndMessageBytes = 36;
constexpr std::uint32_t kDigestBackColor = 0xFFFF80;

void MakeHeading(Label& heading, const char* caption) {
  heading.Caption = caption;
  heading.Alignment = TextAlignment::Right;
  heading.FontSize = 12;
}

void MakeUnit(Label& unit) {
  unit.Caption = "(Hex Values)";
  unit.Alignment = TextAlignment::Centre;
}

}  // namespace

SHA1Calc::SHA1Calc() {
  MakeHeading(Label1, "KEY STRING");
  MakeUnit(Label4);
  MakeHeading(Label2, "MESSAGE STRING");
  MakeUnit(Label5);
  MakeHeading(Label3, "DIGEST STRING");
  cmdSHA1Msg.Caption = "Msg SHA-1 Digest";
  cmdSHA1KeyMsg.Caption = "Key || Msg SHA-1 Digest";
  cmdTarvexHMAC.Caption = "HMAC w/ Key and Message";
  txtDigest.Locked = true;
  txtDigest.BackColor = kDigestBackColor;
  cmdQuit.Caption = "QUIT";
  cmdQuit.FontSize = 12;
  cmdQuit.FontBold = true;
}

void SHA1Calc::str2byte(const std::string& sIn, std::span<std::uint8_t> aOut,
                        std::int16_t lenByte) const {
  const std::string_view text(sIn);
  const std::size_t count =
      std::min(aOut.size(), static_cast<std::size_t>(std::max<std::int16_t>(lenByte, 0)));
  for (std::size_t k = 0; k < count; ++k)
    aOut[k] = 2 * k < text.size() ? HexPairValue(text.substr(2 * k, 2)) : 0;
}

std::string SHA1Calc::Digest(const std::string& text, std::int16_t count) const {
  std::array<std::uint8_t, kKeyAndMessageBytes> bytes{};
  str2byte(text, bytes, count);
  return ToUpper(SHA1_BytesHexHash(std::span(bytes).first(static_cast<std::size_t>(count))));
}

void SHA1Calc::cmdSHA1Msg_Click() {
  txtDigest.Text = Digest(txtMsg.Text, kMessageBytes);
}

void SHA1Calc::cmdSHA1KeyMsg_Click() {
  txtDigest.Text = Digest(txtKey.Text + txtMsg.Text, kKeyAndMessageBytes);
}

void SHA1Calc::cmdTarvexHMAC_Click() {
  const std::string firstPass = Digest(txtKey.Text + txtMsg.Text, kKeyAndMessageBytes);
  txtDigest.Text = Digest(txtKey.Text + firstPass, kKeyAndMessageBytes);
}

}  // namespace ombrelay

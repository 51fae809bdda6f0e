#pragma once
// The calculator form: works out by hand the digests the security panel exchanges with a
// gauge, and holds str2byte, which the panel's digest uses. It needs no gauge and no bus.

#include <cstdint>
#include <span>
#include <string>

#include "shell/controls.h"

namespace ombrelay {

class SHA1Calc {
 public:
  SHA1Calc();

  // The form's client area, in twips.
  static constexpr int kClientWidth = 7980;
  static constexpr int kClientHeight = 3420;

  // aOut[k] from characters 2k and 2k + 1 of sIn read as hex, for k below lenByte; a pair counts
  // up to its first character that is not a hex digit, and what lies past the text counts 0.
  void str2byte(const std::string& sIn, std::span<std::uint8_t> aOut, std::int16_t lenByte) const;

  void cmdSHA1Msg_Click();
  void cmdSHA1KeyMsg_Click();
  void cmdTarvexHMAC_Click();
  // Closes the form.
  void cmdQuit_Click() { Visible = false; }

  std::string Caption = "SHA1/HMAC";
  bool Visible = true;
  Label Label1;
  Label Label4;
  TextBox txtKey;
  Label Label2;
  Label Label5;
  TextBox txtMsg;
  Button cmdSHA1Msg;
  Button cmdSHA1KeyMsg;
  Button cmdTarvexHMAC;
  Label Label3;
  TextBox txtDigest;
  Button cmdQuit;

 private:
  // SHA-1 of the first count bytes that str2byte makes of text, in upper case.
  std::string Digest(const std::string& text, std::int16_t count) const;
};

}  // namespace ombrelay

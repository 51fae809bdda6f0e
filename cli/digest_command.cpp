#include "cli/digest_command.h"

#include "cli/panel_input.h"
#include "security/sha1_calc.h"

namespace ombrelay::cli {

void Digest(const Options& options, Report& report) {
  SHA1Calc form;
  if (!Type(form.txtKey, options.key) || !Type(form.txtMsg, options.message)) return;
  switch (options.digestMode) {
    case DigestMode::Message:
      report.succeeded = Press(form.cmdSHA1Msg, [&] { form.cmdSHA1Msg_Click(); });
      break;
    case DigestMode::KeyAndMessage:
      report.succeeded = Press(form.cmdSHA1KeyMsg, [&] { form.cmdSHA1KeyMsg_Click(); });
      break;
    case DigestMode::Keyed:
      report.succeeded = Press(form.cmdTarvexHMAC, [&] { form.cmdTarvexHMAC_Click(); });
      break;
  }
  report.Add("txtKey", form.Label1.Caption, form.txtKey.Text, kWholeText);
  report.Add("txtMsg", form.Label2.Caption, form.txtMsg.Text);
  report.Add("txtDigest", form.Label3.Caption, form.txtDigest.Text);
}

}  // namespace ombrelay::cli

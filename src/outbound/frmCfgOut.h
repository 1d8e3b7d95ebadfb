// frmCfgOut: the dialog in which a user says whether discussions send e-mail, and by which transport.
//
// Which fields show follows the transport list, which are enabled follows the check box, and neither touches
// the other. OK saves the transport first and the enabling value last; a refusal leaves the dialog open with
// all its entries. Made, shown and dropped on the calling thread within one call of ConfigureOutBoundEmail.
#pragma once

#include "platform/Boolean.h"
#include "platform/Forms/Form.h"

namespace TvEmailServices {

using namespace Platform;

class frmCfgOut : public Form {
 public:
  // The positions of cmbProvider.
  static constexpr std::int32_t kMapiPosition = 0;
  static constexpr std::int32_t kSmtpPosition = 1;

  frmCfgOut();

  // True once a profile stands in cmbProfile. Neither pair touches the form, so what was set outlives its
  // unloading.
  void SetAreMAPIProfilesDefined(Boolean defined) { areMAPIProfilesDefined_ = defined; }
  Boolean AreMAPIProfilesDefined() const { return areMAPIProfilesDefined_; }

  // True only after OK has saved everything.
  void SetWasOutBoundConfigured(Boolean configured) { wasOutBoundConfigured_ = configured; }
  Boolean WasOutBoundConfigured() const { return wasOutBoundConfigured_; }

 private:
  void chkEnableEmail_Click();
  void cmbProvider_Click();
  void cmbProvider_KeyUp();
  void cmbProvider_Scroll();
  void cmdOK_Click();
  void cmdCancel_Click();
  void cmdHelp_Click();
  void Form_Load();
  void Form_Activate();
  void Form_KeyDown(std::int32_t keyCode);
  void txtEMailAddress_GotFocus();
  void txtEMailAddress_MouseDown();
  void txtHost_GotFocus();
  void txtHost_MouseDown();
  void txtRealName_GotFocus();
  void txtRealName_MouseMove();

  bool IsEmailEnabled() { return (*this)[u"chkEnableEmail"].Value() != 0; }
  bool SaveTransport();
  void FocusEmptyField();

  // Both show a failure; the controls behind the one that failed keep their state.
  bool SetOutboundControlsEnabled(bool enabled);
  void ShowOutboundProvider(std::int32_t position);

  Boolean areMAPIProfilesDefined_;
  Boolean wasOutBoundConfigured_;
  Boolean focusByMouse_;
};

}  // namespace TvEmailServices

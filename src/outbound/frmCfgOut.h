// frmCfgOut: the dialog in which a user chooses whether discussions send e-mail, and the transport.
//
// The transport list decides which fields are visible, the check box which are enabled. OK saves the
// transport first and the enabling value last; if a save fails the dialog stays open with all entries.
// Created, shown and destroyed within one call of ConfigureOutBoundEmail, on its thread.
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

  // True if cmbProfile has an entry. This and the next property don't load the form, and keep their values
  // when it is unloaded.
  void SetAreMAPIProfilesDefined(Boolean defined) { areMAPIProfilesDefined_ = defined; }
  Boolean AreMAPIProfilesDefined() const { return areMAPIProfilesDefined_; }

  // True only after OK has saved all settings.
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

  // Both show a failure; the controls after the one that failed keep their state.
  bool SetOutboundControlsEnabled(bool enabled);
  void ShowOutboundProvider(std::int32_t position);

  Boolean areMAPIProfilesDefined_;
  Boolean wasOutBoundConfigured_;
  Boolean focusByMouse_;
};

}  // namespace TvEmailServices

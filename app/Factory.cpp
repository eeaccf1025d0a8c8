#include "app/Factory.h"

#include "align/frmAlign.h"
#include "align/frmAutoAdjust.h"
#include "align/frmCombine.h"
#include "analysis/FTS_Hist.h"
#include "analysis/frmProfile.h"
#include "app/frmAbout.h"
#include "app/frmFITS.h"
#include "app/frmPref.h"
#include "color/frmColor.h"
#include "filters/frmFilter.h"
#include "luminance/frmDeConv.h"
#include "luminance/frmMask.h"
#include "luminance/frmPower.h"
#include "luminance/frmScale.h"
#include "viewer/frmExamine.h"
#include "viewer/frmInfo.h"

namespace corvane {

std::unique_ptr<ToolWindow> MakeWindow(Window window, ModCV& cv, Platform& os, Desk& desk) {
  switch (window) {
    case Window::Examine:
      return std::make_unique<frmExamine>(cv, os, desk);
    case Window::Scale:
      return std::make_unique<frmScale>(cv, os, desk);
    case Window::Mask:
      return std::make_unique<frmMask>(cv, os, desk);
    case Window::Filter:
      return std::make_unique<frmFilter>(cv, os, desk);
    case Window::Align:
      return std::make_unique<frmAlign>(cv, os, desk);
    case Window::Combine:
      return std::make_unique<frmCombine>(cv, os, desk);
    case Window::Color:
      break;
  }
  return std::make_unique<frmColor>(cv, os, desk);
}

std::unique_ptr<QDialog> MakeDialog(Dialog dialog, ModCV& cv, Platform& os) {
  switch (dialog) {
    case Dialog::Info:
      return std::make_unique<frmInfo>(cv, os);
    case Dialog::Histogram:
      return std::make_unique<FTS_Hist>(cv, os);
    case Dialog::Profile:
      return std::make_unique<frmProfile>(cv, os);
    case Dialog::Preferences:
      return std::make_unique<frmPref>(cv, os);
    case Dialog::About:
      return std::make_unique<frmAbout>(cv, os);
    case Dialog::SaveOptions:
      return std::make_unique<frmFITS>(cv, os);
    case Dialog::Deconvolution:
      return std::make_unique<frmDeConv>(cv, os);
    case Dialog::Exponent:
      return std::make_unique<frmPower>(cv, os);
    case Dialog::AutoAdjust:
      break;
  }
  return std::make_unique<frmAutoAdjust>(cv, os);
}

}  // namespace corvane

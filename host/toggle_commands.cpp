#include "host/toggle_commands.h"

#include "common_sources/auto_cad_proxy.h"
#include "common_sources/lm_auto_cad.h"
#include "util/util.h"

#include "acutads.h"

#include <string>

namespace {

void report(const char* prefix, bool isOn) {
  // The prefix ends in a blank already, so the command line shows two; the texts are fixed.
  const std::string message = std::string(prefix) + " " + Util::boolToOnOff(isOn);
  // By %ls: the host takes wide texts, and a "%" in the message must not be a format.
  acutPrintf(L"%ls", Util::widen(message).c_str());
}

}  // namespace

void toggleRotationCenter() {
  AutoCadProxy* const proxyP = AutoCadProxy::instance();
  if (proxyP == nullptr) return;
  LmAutoCad& settings = *proxyP->lmAutoCad();
  settings.setToggleRotationCenter(!settings.toggleRotationCenter());
  report("\n=> Selection as Rotation Center: ", settings.toggleRotationCenter());
}

void toggleRotationAxis() {
  AutoCadProxy* const proxyP = AutoCadProxy::instance();
  if (proxyP == nullptr) return;
  LmAutoCad& settings = *proxyP->lmAutoCad();
  settings.setToggleRotationAxis(!settings.toggleRotationAxis());
  report("\n=> Selected Line as Rotation Axis: ", settings.toggleRotationAxis());
}

void toggleScrollMode() {
  AutoCadProxy* const proxyP = AutoCadProxy::instance();
  if (proxyP == nullptr) return;
  LmAutoCad& settings = *proxyP->lmAutoCad();
  settings.setScrollTreeAndList(!settings.scrollTreeAndList());
  report("\n=> Scroll Trees and Lists: ", settings.scrollTreeAndList());
}

void toggleObjectMoveMode() {
  AutoCadProxy* const proxyP = AutoCadProxy::instance();
  if (proxyP == nullptr) return;
  proxyP->setObjectMoveMode(!proxyP->isObjectMoveMode());
  report("\n=> Move Selected Object: ", proxyP->isObjectMoveMode());
}

/// Reports what happens at the host to whoever observes a run: a listener for each kind of event, and one
/// hook for everything that draws. Main thread only, but for calls that a module makes elsewhere by mistake.
#ifndef STANDIN_LISTENER_H
#define STANDIN_LISTENER_H

#include "standin/objectarx/camera.h"
#include "standin_objectarx_api.h"

#include <functional>
#include <string>

namespace standin::host {

/// Is called in the middle of the host call that the event belongs to.
class STANDIN_OBJECTARX_API Listener {
 public:
  virtual ~Listener() = default;
  /// AcGsView::update, before it draws.
  virtual void viewUpdated(int /*viewport*/, const Camera& /*camera*/) {}
  /// acgsSetViewParameters.
  virtual void viewCommitted(int /*viewport*/, const Camera& /*camera*/) {}
  /// A command or session event changed a view, or made another viewport current.
  virtual void viewChanged(int /*viewport*/, const Camera& /*camera*/) {}
  /// AcDbViewport::updateDisplay and acedVportTableRecords2Vports, before they draw.
  virtual void paperChanged(int /*viewport*/, const PaperView& /*shown*/) {}
  virtual void textSent(const std::wstring& /*text*/, bool /*activate*/) {}  ///< sendStringToExecute
  virtual void modulePrinted(const std::wstring& /*text*/) {}                ///< acutPrintf
  /// A rule of the host was broken. The host's lock may be held: must not call the host.
  virtual void ruleBroken(const std::string& /*breach*/) {}
  virtual void hostPrinted(const std::wstring& /*text*/) {}  ///< what the host itself prints
  /// NETLOAD has loaded the assembly. It is not run here: a listener may run it.
  virtual void assemblyLoaded(const std::wstring& /*path*/) {}
};

/// The listener, null for none. Not owned.
STANDIN_OBJECTARX_API void setListener(Listener* listenerP);

Listener* listener();
/// Calls the listener, when there is one. Not while the host's lock is held.
template <class Event, class... Arguments>
void notify(Event event, const Arguments&... arguments) {
  if (Listener* listenerP = listener()) (listenerP->*event)(arguments...);
}

/// The hook that every drawing call ends with, after the listener; empty for none.
void setDrawnHook(std::function<void()> hook);
/// Calls the hook. Not while the host's lock is held.
void drawn();

}  // namespace standin::host

#endif

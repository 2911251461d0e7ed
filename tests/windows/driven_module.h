/// The shipped module with its time in a test's hands: its timer runs when the test says so, each pass takes
/// 10 ms on its clock, and its threads pause for 1 ms only; the mouse pointer is nowhere. Its imports of
/// those functions lead here. One at a time; main thread.
#ifndef TESTS_WINDOWS_DRIVEN_MODULE_H
#define TESTS_WINDOWS_DRIVEN_MODULE_H

#include "tests/module_life/loaded_module.h"

#include <array>
#include <cstdint>
#include <functional>

class DrivenModule {
 public:
  /// Loads the file and sends the init message. Throws std::runtime_error when an import is not found.
  DrivenModule();
  /// Sends the unload message.
  ~DrivenModule();
  DrivenModule(const DrivenModule&) = delete;
  DrivenModule& operator=(const DrivenModule&) = delete;

  /// Runs the timer's procedure; nothing when no timer is set.
  void tick() const;

  /// An event of the device, stored by the module's reading thread when this returns.
  void deliver(std::int32_t code, std::array<std::int16_t, 6> axes) const;

  /// Deflects the cap for a tick and lets it go.
  void move(std::array<std::int16_t, 6> axes) const;

  /// The same; `inFirstPass` happens in the first pass, after the module has read the tab and the viewport.
  void move(std::array<std::int16_t, 6> axes, std::function<void()> inFirstPass) const;

 private:
  LoadedModule mModule;
};

#endif

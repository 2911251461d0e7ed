#include "workbench/live/browser.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cstdlib>

namespace workbench {

void openBrowser(const std::string& address) {
  if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr) return;
  std::string program = "xdg-open", argument = address;
  char* argv[] = {program.data(), argument.data(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  // A group of its own: Ctrl-C ends this program and not the user's browser.
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  posix_spawnattr_setpgroup(&attributes, 0);
  pid_t child = 0;
  // Without the program there is no browser to open; the address has been printed.
  static_cast<void>(posix_spawnp(&child, program.c_str(), &actions, &attributes, argv, environ));
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
}

}  // namespace workbench

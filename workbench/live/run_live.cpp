#include "workbench/live/run_live.h"

#include "standin_clock.h"
#include "workbench/dxf/reader.h"
#include "workbench/exit_status.h"
#include "workbench/input_error.h"
#include "workbench/live/browser.h"
#include "workbench/live/live_page.h"
#include "workbench/live/live_session.h"
#include "workbench/platform/interruption.h"
#include "workbench/platform/run_place.h"
#include "workbench/text_input.h"

#include <optional>
#include <utility>

namespace workbench {
namespace {

namespace fs = std::filesystem;

/// The options with absolute paths: the working folder changes during the session.
LiveOptions absolute(LiveOptions options) {
  const auto makeAbsolute = [](fs::path& path) { path = fs::absolute(path).lexically_normal(); };
  for (fs::path& drawing : options.drawings) makeAbsolute(drawing);
  makeAbsolute(options.out);
  makeAbsolute(options.module);
  if (options.menu) makeAbsolute(*options.menu);
  if (options.profile) makeAbsolute(*options.profile);
  return options;
}

std::string withParts(std::string frame, const std::string& mark, const std::string& part) {
  const std::size_t at = frame.find(mark);
  return at == std::string::npos ? frame : frame.replace(at, mark.size(), part);
}

std::string livePage() {
  return withParts(withParts(kLiveFrame, "@@STYLE@@", kLiveStyle), "@@SCRIPT@@", kLiveScript);
}

}  // namespace

int runLive(const LiveOptions& given, std::ostream& out, std::ostream& err) {
  const LiveOptions options = absolute(given);
  // All that is named is read or looked at before anything is written.
  auto drawing = readDrawing(options.drawings.front());
  for (const fs::path& file : options.drawings)
    if (!fs::is_regular_file(file))
      throw InputError({file.string()}, "a drawing (DXF text file)", "no such file");
  std::optional<std::string> menu;
  if (options.menu) menu = readBytes(*options.menu, "a menu file");

  const InterruptionGuard guard;
  LiveFiles files(options);
  const Profile profile(options.profile.value_or(files.runFolder() / "profile"));
  profile.make();
  if (menu) profile.writeMenu(*menu);
  files.keepSettings(profile.settingsFile());

  const std::string page = livePage();
  Inbox inbox;
  Hub hub(inbox);
  // Before the clock starts, which counts the threads that begin after it as the module's.
  Server server({options.port, makeToken(), page}, hub);
  hub.setServer(server);

  standin::clock::start(standin::clock::Kind::kReplay);
  const RunPlace place(files.runFolder(), profile.folder(), options.module);
  Module module(options.module, place.module());
  LiveSession session({server, hub, inbox, module, profile, options.drawings, files}, std::move(drawing));
  // The address is printed alone on its line, so that scripts can take it.
  out << server.address() << std::endl;
  if (options.isBrowserOpened) openBrowser(server.address());
  session.run();

  const fs::path file = files.save(session.text());
  for (const std::string& problem : session.problems()) err << "workbench: problem: " << problem << "\n";
  out << "The module is unloaded and the session saved: " << file.string() << std::endl;
  return session.problems().empty() ? kExitClean : kExitUnclean;
}

}  // namespace workbench

/// What happened during a run, as the outputs give it: the path of the views, the command line, the
/// selections.
#ifndef WORKBENCH_RECORDING_H
#define WORKBENCH_RECORDING_H

#include "standin/objectarx/host_control.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace workbench {

enum class RowKind { kStart, kPass3d, kCommit, kView, kPass2d };
constexpr RowKind kRowKinds[] = {RowKind::kStart, RowKind::kPass3d, RowKind::kCommit, RowKind::kView,
                                 RowKind::kPass2d};

/// One row of the trajectory. Of a sheet (`isPaper`) the camera holds the centre as position x and y, the
/// visible size as fields, and 0 otherwise.
struct TrajectoryRow {
  std::int64_t timeMs = 0;
  RowKind kind = RowKind::kStart;
  int viewport = 0;
  bool isPaper = false;
  bool isLayout = false;              ///< a layout is shown, not the model tab
  std::array<std::int16_t, 6> cap{};  ///< last handed to the module's reading thread
  standin::host::Camera camera;
};

enum class LineKind { kSend, kSendActivate, kPrint, kHost, kBox, kBeep };
constexpr LineKind kLineKinds[] = {LineKind::kSend, LineKind::kSendActivate, LineKind::kPrint,
                                   LineKind::kHost, LineKind::kBox,          LineKind::kBeep};

struct CommandLineEntry {
  std::int64_t timeMs = 0;
  LineKind kind = LineKind::kHost;
  std::string text;  ///< UTF-8
};

/// A handle as drawings write it: hexadecimal, capital letters.
std::string handleText(std::uint64_t handle);

struct SelectionChange {
  std::int64_t timeMs = 0;
  std::vector<std::uint64_t> handles;
};

/// A rule of the host that the module broke.
struct Breach {
  std::string text;
  std::uint64_t count = 0;
  std::int64_t firstMs = 0;
};

struct Recording {
  std::vector<TrajectoryRow> rows;
  std::vector<CommandLineEntry> commandLine;
  std::vector<SelectionChange> selections;
  std::vector<Breach> breaches;             ///< one for each text, in the order of their first times
  std::set<std::uint64_t> handlesNotFound;  ///< that the session selects and the drawing does not have
};

/// Listens to the host and the desktop and records what they report. The calls come on the main thread from a
/// module that keeps the rules, and from any thread otherwise.
class Recorder : public standin::host::Listener {
 public:
  /// Runs an assembly that NETLOAD has loaded, and returns what the command line shows (UTF-8, lines).
  using AssemblyRunner = std::function<std::string(const std::filesystem::path& assembly)>;

  /// An empty `runAssembly` leaves assemblies alone.
  explicit Recorder(AssemblyRunner runAssembly);
  ~Recorder() override;

  /// The row of kind `start`: the current view as it is now. Main thread.
  void begin();
  /// Records the pre-selection if it has changed. Main thread.
  void noteSelection();
  /// Records that the drawing has no such entity, and what the host prints about it. Main thread.
  void noteHandleNotFound(std::uint64_t handle);
  Recording take();

  void viewUpdated(int viewport, const standin::host::Camera& camera) override;
  void viewCommitted(int viewport, const standin::host::Camera& camera) override;
  void viewChanged(int viewport, const standin::host::Camera& camera) override;
  void paperChanged(int viewport, const standin::host::PaperView& view) override;
  void textSent(const std::wstring& text, bool activate) override;
  void modulePrinted(const std::wstring& text) override;
  void hostPrinted(const std::wstring& text) override;
  void ruleBroken(const std::string& breach) override;
  void assemblyLoaded(const std::wstring& path) override;

 private:
  void addRow(RowKind kind, int viewport, const standin::host::Camera& camera);
  void addPaperRow(RowKind kind, int viewport, const standin::host::PaperView& view);
  void addLine(LineKind kind, const std::wstring& text);

  const AssemblyRunner mRunAssembly;
  std::mutex mMutex;
  Recording mRecording;
};

}  // namespace workbench

#endif

#include "workbench/running/recording.h"

#include "standin/controller/controller_feed.h"
#include "standin_clock.h"
#include "workbench/platform/desktop.h"
#include "workbench/text_input.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <sstream>
#include <utility>

namespace workbench {
namespace {

namespace clock = standin::clock;
namespace controller = standin::controller;
namespace host = standin::host;

constexpr int kPaperViewport = 1;

bool isLayoutShown() {
  return host::variable(L"TILEMODE") == L"0";
}

/// The layout's own viewport shows the sheet; in the model tab number 1 does not occur.
bool isSheet(int viewport) {
  return viewport == kPaperViewport && isLayoutShown();
}

host::Camera sheetCamera(const host::PaperView& view) {
  host::Camera camera;
  camera.position = {view.centerX, view.centerY, 0};
  camera.target = {0, 0, 0};
  // A sheet has no up vector. In the table, zeros mark the row as one that is no camera.
  camera.up = {0, 0, 0};
  camera.fieldWidth = view.width;
  camera.fieldHeight = view.height;
  return camera;
}

}  // namespace

std::string handleText(std::uint64_t handle) {
  char text[20];
  std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(handle));
  return text;
}

Recorder::Recorder(AssemblyRunner runAssembly) : mRunAssembly(std::move(runAssembly)) {
  listenToDesktop([this](const DesktopMessage& message) {
    addLine(message.isBeep ? LineKind::kBeep : LineKind::kBox, message.text);
  });
  host::setListener(this);
}

Recorder::~Recorder() {
  host::setListener(nullptr);
  listenToDesktop({});
}

void Recorder::begin() {
  assert(clock::isMainThread() && "the start is recorded on the main thread");
  const int viewport = host::currentViewport();
  if (const auto camera = host::camera(viewport)) addRow(RowKind::kStart, viewport, *camera);
  noteSelection();
}

void Recorder::noteSelection() {
  assert(clock::isMainThread() && "the selection is read on the main thread");
  std::vector<std::uint64_t> handles = host::selection();
  auto& changes = mRecording.selections;
  // Noted after each step of the host, most of which do not change the selection.
  if (changes.empty() || changes.back().handles != handles)
    changes.push_back({clock::nowMs(), std::move(handles)});
}

void Recorder::noteHandleNotFound(std::uint64_t handle) {
  mRecording.handlesNotFound.insert(handle);
  // Recorded as a line of the host, so that it appears among the other lines at its time.
  hostPrinted(toWide("No object with handle " + handleText(handle) + "."));
}

Recording Recorder::take() {
  return std::move(mRecording);
}

void Recorder::viewUpdated(int viewport, const host::Camera& camera) {
  addRow(RowKind::kPass3d, viewport, camera);
}

void Recorder::viewCommitted(int viewport, const host::Camera& camera) {
  addRow(RowKind::kCommit, viewport, camera);
}

void Recorder::viewChanged(int viewport, const host::Camera& camera) {
  // The camera of the sheet's viewport says nothing; what is seen of it is the paper view.
  if (isSheet(viewport)) return addPaperRow(RowKind::kView, viewport, host::paperView());
  addRow(RowKind::kView, viewport, camera);
}

void Recorder::paperChanged(int viewport, const host::PaperView& view) {
  addPaperRow(RowKind::kPass2d, viewport, view);
}

void Recorder::textSent(const std::wstring& text, bool activate) {
  addLine(activate ? LineKind::kSendActivate : LineKind::kSend, text);
}

void Recorder::modulePrinted(const std::wstring& text) {
  addLine(LineKind::kPrint, text);
}

void Recorder::hostPrinted(const std::wstring& text) {
  addLine(LineKind::kHost, text);
}

void Recorder::assemblyLoaded(const std::wstring& path) {
  // Loading an assembly is a success for the module even where none can run.
  if (!mRunAssembly) return;
  std::istringstream shown(mRunAssembly(std::filesystem::path(path)));
  for (std::string line; std::getline(shown, line);)
    if (!line.empty()) hostPrinted(toWide(line));
}

void Recorder::ruleBroken(const std::string& breach) {
  // A module that breaks the rules may call from any of its threads. The calls of one that keeps them never
  // wait here.
  const std::lock_guard lock(mMutex);
  const auto known = std::find_if(mRecording.breaches.begin(), mRecording.breaches.end(),
                                  [&breach](const Breach& other) { return other.text == breach; });
  if (known != mRecording.breaches.end())
    // A breach may recur at every pass; one line with a count keeps the report readable.
    ++known->count;
  else
    mRecording.breaches.push_back({breach, 1, clock::nowMs()});
}

void Recorder::addRow(RowKind kind, int viewport, const host::Camera& camera) {
  // Outside the lock, because this takes the lock of the host.
  const bool isLayout = isLayoutShown();
  const std::lock_guard lock(mMutex);
  mRecording.rows.push_back(
      {clock::nowMs(), kind, viewport, false, isLayout, controller::lastHandedOver(), camera});
}

void Recorder::addPaperRow(RowKind kind, int viewport, const host::PaperView& view) {
  const bool isLayout = isLayoutShown();
  const std::lock_guard lock(mMutex);
  mRecording.rows.push_back(
      {clock::nowMs(), kind, viewport, true, isLayout, controller::lastHandedOver(), sheetCamera(view)});
}

void Recorder::addLine(LineKind kind, const std::wstring& text) {
  const std::lock_guard lock(mMutex);
  mRecording.commandLine.push_back({clock::nowMs(), kind, toUtf8(std::wstring_view(text))});
}

}  // namespace workbench

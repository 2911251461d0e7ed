using System;
using System.Collections.Generic;
using System.Text;

namespace MenuScribe {

/// Writes the menu file when AutoCAD is idle: once after it was loaded, and again when the menus have changed. AutoCAD
/// loads the assembly once a session, so this also serves a module that is loaded again. Main thread.
sealed class Exporter {
  /// How long the menus are taken for unchanged. A look costs a few file times.
  const int kLookMs = 15000;
  const string kTitle = "Menu export: ";
  const string kNotWritten = "; the menu file is as it was, LM_EXPORT_MENU tries again";

  static Exporter sOfSession;

  readonly Encoding mEncoding;
  readonly Func<int> mNowMs;
  /// Lines that could not be printed yet, for want of a drawing.
  readonly List<string> mUntold = new List<string>();
  /// The menus as they were at the last export; null before the first.
  MenuState mExported;
  int mLastLookMs;

  public static Exporter ofSession() {
    // On Windows that is the system's ANSI code page, in which module and driver read the file.
    return sOfSession = sOfSession ?? new Exporter(Encoding.Default, () => Environment.TickCount);
  }

  public Exporter(Encoding encoding, Func<int> nowMs) {
    mEncoding = encoding;
    mNowMs = nowMs;
  }

  public void start() {
    Host.onIdle((sender, arguments) => onIdle());
  }

  /// LM_EXPORT_MENU: exports whether something has changed or not, and reports.
  public void exportOnCommand() {
    Export export = run();
    if (export != null) tell(kTitle + export.summary());
  }

  /// A failed export is not tried again before something changes: reading the menus holds AutoCAD up.
  void onIdle() {
    try {
      bool isDue = mExported == null || unchecked(mNowMs() - mLastLookMs) >= kLookMs;
      if (!isDue && mUntold.Count == 0 || Host.isInCommand()) return;
      tellLeft();
      if (!isDue) return;
      mLastLookMs = mNowMs();
      if (mExported == null || mExported.isOutdated()) run();
    } catch (Exception failure) {
      FailureLog.write("Idle", failure);
    }
  }

  /// The export; null when nothing could be written.
  Export run() {
    Problems problems = new Problems();
    Export export = problems.guard("menus", () => new Export(mEncoding, problems), null);
    bool isWritten = export != null && export.isWhole && problems.guard("menu file", () => put(export), false);
    mExported = new MenuState(export == null ? new List<string>() : export.paths, isWritten);
    if (problems.count != 0) tell(kTitle + problems.summary() + (isWritten ? "" : kNotWritten));
    problems.log();
    return isWritten ? export : null;
  }

  static bool put(Export export) {
    MenuFile.put(Folders.menuFile(), export.contents);
    return true;
  }

  void tell(string line) {
    if (!Host.print(line)) mUntold.Add(line);
  }

  void tellLeft() {
    while (mUntold.Count > 0 && Host.print(mUntold[0])) mUntold.RemoveAt(0);
  }
}

}

using System;
using System.Collections.Generic;
using System.IO;

namespace MenuScribe {

/// The customization files that AutoCAD has in use: the main one, its partial ones, the enterprise one and its partial
/// ones, in this order. Main thread.
sealed class CuiFiles {
  const string kExtension = ".cuix";
  const string kOldExtension = ".cui";

  readonly Problems mProblems;
  readonly Members mMembers;

  /// Those that could be read.
  public readonly List<CuiFile> files = new List<CuiFile>();
  /// All that should exist, readable or not, so that a change of one is noticed.
  public readonly List<string> paths = new List<string>();
  public CuiFile main { get; private set; }
  public CuiFile enterprise { get; private set; }

  public CuiFiles(Problems problems, Members members) {
    mProblems = problems;
    mMembers = members;
    main = openWithPartials(mainPath(), "main menu file");
    string shared = enterprisePath();
    if (shared.Length != 0) enterprise = openWithPartials(shared, "enterprise menu file");
  }

  /// AutoCAD names its main file without the extension; one that is there already is not added again.
  public static string mainPath() {
    return withExtension(Host.variable("MENUNAME"));
  }

  /// Empty when there is no enterprise file, for which AutoCAD has a lone dot.
  public static string enterprisePath() {
    string path = Host.variable("ENTERPRISEMENU");
    return path == "." ? "" : withExtension(path);
  }

  static string withExtension(string path) {
    string extension = path.Length == 0 ? "" : Path.GetExtension(path);
    bool isThere = extension.Equals(kExtension, StringComparison.OrdinalIgnoreCase) ||
                   extension.Equals(kOldExtension, StringComparison.OrdinalIgnoreCase);
    return path.Length == 0 || isThere ? path : path + kExtension;
  }

  CuiFile openWithPartials(string path, string kind) {
    CuiFile file = open(path, kind);
    if (file != null) mProblems.guard(path, () => openPartials(file), false);
    return file;
  }

  bool openPartials(CuiFile parent) {
    foreach (object name in CuiFile.all(parent.section.PartialCuiFiles)) {
      string path = name as string;
      if (!string.IsNullOrEmpty(path)) open(resolved(path, parent.path), "partial menu file");
    }
    return true;
  }

  /// A partial file may be given by its name alone; it is then beside the file that names it.
  static string resolved(string path, string parent) {
    path = Environment.ExpandEnvironmentVariables(path);
    return Path.IsPathRooted(path) ? path : Path.Combine(Path.GetDirectoryName(parent), path);
  }

  CuiFile open(string path, string kind) {
    if (isKnown(path)) return null;
    paths.Add(path);
    if (!File.Exists(path)) {
      mProblems.add(kind + " '" + path + "' not found");
      return null;
    }
    CuiFile file = mProblems.guard(kind + " '" + path + "'", () => new CuiFile(path, mProblems, mMembers), null);
    if (file != null) files.Add(file);
    return file;
  }

  bool isKnown(string path) {
    foreach (string known in paths)
      if (string.Equals(known, path, StringComparison.OrdinalIgnoreCase)) return true;
    return false;
  }
}

}

using System;
using System.Diagnostics;
using System.IO;

namespace MenuScribe {

/// Puts the menu file in place whole or not at all: module and driver may read it at any moment.
static class MenuFile {
  /// Throws what the system does; the file that was there is then there still. A file with the same contents is left
  /// alone.
  public static void put(string path, byte[] contents) {
    if (hasContents(path, contents)) return;
    // A name of its own for each AutoCAD that runs.
    string fresh = path + "." + Process.GetCurrentProcess().Id + ".new";
    try {
      writeToDisk(fresh, contents);
      replace(path, fresh);
    } catch (Exception) {
      remove(fresh);
      throw;
    }
  }

  static bool hasContents(string path, byte[] contents) {
    if (!File.Exists(path) || new FileInfo(path).Length != contents.Length) return false;
    byte[] old = File.ReadAllBytes(path);
    if (old.Length != contents.Length) return false;
    for (int i = 0; i < contents.Length; ++i)
      if (old[i] != contents[i]) return false;
    return true;
  }

  static void writeToDisk(string path, byte[] contents) {
    using (FileStream file = new FileStream(path, FileMode.Create, FileAccess.Write, FileShare.None)) {
      file.Write(contents, 0, contents.Length);
      file.Flush(true);
    }
  }

  static void replace(string path, string fresh) {
    if (!File.Exists(path)) {
      File.Move(fresh, path);
      return;
    }
    try {
      File.Replace(fresh, path, null);
    } catch (IOException) {
      // Without a backup the system may have removed the old file before it failed to rename the new one.
      if (File.Exists(path)) throw;
      File.Move(fresh, path);
    }
  }

  static void remove(string path) {
    try {
      File.Delete(path);
    } catch (Exception) {
    }
  }
}

}

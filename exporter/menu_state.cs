using System;
using System.Collections.Generic;
using System.IO;
using System.Text;

namespace MenuScribe {

/// The state that an export was made from, to find out later whether another one is due. Main thread.
sealed class MenuState {
  readonly List<string> mPaths;
  readonly bool mIsWritten;
  readonly string mSeen;

  /// `paths`: the customization files; `isWritten`: whether the menu file was put in place.
  public MenuState(List<string> paths, bool isWritten) {
    mPaths = paths;
    mIsWritten = isWritten;
    mSeen = look();
  }

  /// Whether the menus have changed, or the menu file has been removed.
  public bool isOutdated() {
    return look() != mSeen || (mIsWritten && !File.Exists(Folders.menuFile()));
  }

  string look() {
    StringBuilder seen = new StringBuilder();
    seen.Append(CuiFiles.mainPath()).Append('\n').Append(CuiFiles.enterprisePath()).Append('\n');
    seen.Append(Host.variable("WSCURRENT")).Append('\n');
    foreach (string path in mPaths) seen.Append(lookAt(path)).Append('\n');
    return seen.ToString();
  }

  static string lookAt(string path) {
    try {
      FileInfo file = new FileInfo(path);
      return file.Exists ? file.Length + " " + file.LastWriteTimeUtc.Ticks : "none";
    } catch (Exception failure) {
      return failure.GetType().Name;
    }
  }
}

}

using System;
using System.Collections.Generic;

namespace MenuScribe {

/// What went wrong during one export, each text once, in order. A problem costs the file, menu or item that it is about.
sealed class Problems {
  readonly List<string> mTexts = new List<string>();
  readonly List<Exception> mCauses = new List<Exception>();

  public int count { get { return mTexts.Count; } }

  public void add(string text) {
    add(text, null);
  }

  public void add(string text, Exception cause) {
    if (mTexts.Contains(text)) return;
    mTexts.Add(text);
    mCauses.Add(cause);
  }

  /// Result of `read`; `otherwise`, with the problem noted, when that throws or a member that it names is missing. The
  /// compiler puts `read` into a method of its own, so a missing member throws inside the try.
  public T guard<T>(string what, Func<T> read, T otherwise) {
    try {
      return read();
    } catch (Exception failure) {
      add(what + ": " + oneLine(failure.Message), failure);
      return otherwise;
    }
  }

  /// One line: the first problem, and how many more there are.
  public string summary() {
    if (mTexts.Count < 2) return mTexts.Count == 0 ? "" : mTexts[0];
    return mTexts[0] + " (and " + (mTexts.Count - 1) + " more, see " + FailureLog.kFileName + ")";
  }

  public void log() {
    for (int i = 0; i < mTexts.Count; ++i) FailureLog.write(mTexts[i], mCauses[i]);
  }

  public static string oneLine(string text) {
    return text.Replace("\r", "").Replace('\n', ' ').Trim();
  }
}

}

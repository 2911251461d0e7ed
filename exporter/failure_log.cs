using System;
using System.Globalization;
using System.IO;
using System.Text;

namespace MenuScribe {

/// The exporter's own log. It exists only when something has failed. Any thread.
static class FailureLog {
  public const string kFileName = "menu_exporter_log.txt";
  /// A longer file is started over: a fault that recurs every session must not fill the disk.
  const long kLargestBytes = 256 * 1024;

  /// Appends a line and the stack trace of `failure`. Never throws, since no place is left to report to.
  public static void write(string text, Exception failure) {
    try {
      append(text, failure);
    } catch (Exception) {
    }
  }

  static void append(string text, Exception failure) {
    string path = Path.Combine(Folders.settings(), kFileName);
    string time = DateTime.UtcNow.ToString("yyyy-MM-dd HH:mm:ss", CultureInfo.InvariantCulture);
    string entry = time + " (UTC) " + text + "\r\n" + (failure == null ? "" : failure + "\r\n");
    bool isTooLong = File.Exists(path) && new FileInfo(path).Length > kLargestBytes;
    byte[] bytes = Encoding.UTF8.GetBytes(entry);
    using (FileStream file = new FileStream(path, isTooLong ? FileMode.Create : FileMode.Append, FileAccess.Write,
                                            FileShare.ReadWrite))
      file.Write(bytes, 0, bytes.Length);
  }
}

}

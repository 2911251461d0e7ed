using System.Text;

namespace MenuScribe {

/// Text in the code page of the menu file, which both the module and the driver read byte by byte.
sealed class AnsiText {
  readonly Encoding mEncoding;

  public AnsiText(Encoding encoding) {
    mEncoding = encoding;
  }

  public byte[] bytes(string text) {
    return mEncoding.GetBytes(text);
  }

  /// Whether the page has every character of the text, and no second byte of a character looks like one of `marks`
  /// (ASCII): a reader that works byte by byte would take it for one.
  public bool isWritable(string text, string marks) {
    byte[] coded = mEncoding.GetBytes(text);
    if (mEncoding.GetString(coded) != text) return false;
    foreach (char mark in marks)
      if (countOf(coded, mark) != countOf(text, mark)) return false;
    return true;
  }

  static int countOf(byte[] bytes, char mark) {
    int count = 0;
    foreach (byte one in bytes)
      if (one == mark) ++count;
    return count;
  }

  static int countOf(string text, char mark) {
    int count = 0;
    foreach (char letter in text)
      if (letter == mark) ++count;
    return count;
  }
}

}

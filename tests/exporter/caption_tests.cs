using MenuScribe;

static class CaptionTests {
  /// Pairs of a name and what is read.
  static void readable(params string[] pairs) {
    for (int i = 0; i < pairs.Length; i += 2)
      Checks.equal(Caption.readable(pairs[i]), pairs[i + 1], "<" + pairs[i] + ">");
  }

  public static void MnemonicsAreRemoved() {
    readable("&Line", "Line", "Save &As...", "Save As...", "A && B", "A & B", "Q&", "Q&");
  }

  public static void MnemonicsInParenthesesAreRemovedWithThem() {
    readable("\u5c01\u5370(&S)...", "\u5c01\u5370...", "a(b)", "a(b)", "(&ab)", "(ab)");
  }

  public static void ShortcutsAreRemoved() {
    readable("&Open...\\tCtrl+O", "Open...", "&Open...\tCtrl+O", "Open...", "C:\\temp", "C:");
  }

  public static void MarksBeforeTheNameAreRemoved() {
    readable("~Shade", "Shade", "!.Grid", "Grid", "~!.Grid", "Grid", "!Grid", "!Grid");
  }

  public static void CharactersThatTheFileNeedsAreReplaced() {
    readable("a{b}c", "a(b)c", "x|y", "x/y", "Room #4", "Room 4", "a\r\nb", "a b", "a\u0001\u0002b", "a b");
  }

  public static void NameWithNothingToReadBecomesTheIdentifier() {
    Checks.equal(new Caption(" & ", "PM_1").text, "PM_1", "blank name");
    Checks.equal(new Caption(null, "PM_1").text, "PM_1", "no name");
    Checks.equal(new Caption("A", "PM_1").text, "A", "name");
  }
}

namespace MenuScribe {

/// Why a menu item is not in the file.
enum Loss {
  None,
  NoMacro,
  OnlyCancels,
  Pause,
  Diesel,
  MenuSwitch,
  ControlCharacter,
  FileMark,
  CodePage,
}

static class Losses {
  /// In the order of the enumeration.
  static readonly string[] kTexts = {
    "",
    "without a macro",
    "only cancelling",
    "waiting for input first",
    "with a DIESEL expression that the file cannot hold",
    "switching menus",
    "with control characters",
    "with \"#\", \"|\" or a line end",
    "with characters that the system's code page lacks",
  };

  public static int count { get { return kTexts.Length; } }

  public static string text(Loss loss) {
    return kTexts[(int)loss];
  }
}

}

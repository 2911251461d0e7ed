using System;
using System.Text;

namespace MenuScribe {

/// The notation of AutoCAD's macros: control characters as a caret and a letter, semicolons for Enter.
static class MacroSyntax {
  static readonly char[] kFileMarks = {'#', '|', '\r', '\n'};

  /// A line that ends in "+" goes on in the next one.
  public static string joinLines(string command) {
    return (command ?? "").Replace("+\r\n", "").Replace("+\n", "").Replace("+\r", "");
  }

  /// Replaces raw control characters of the macro by AutoCAD's notation. A line end is not an Enter.
  public static string withCarets(string macro) {
    StringBuilder text = new StringBuilder();
    foreach (char letter in macro) {
      if (letter < ' ' && letter != '\r' && letter != '\n')
        text.Append('^').Append((char)(letter + '@'));
      else
        text.Append(letter);
    }
    return text.ToString();
  }

  /// The letter, in upper case, of the control character at `at`; 0 when there is none.
  public static char controlAt(string macro, int at) {
    if (at + 1 >= macro.Length || macro[at] != '^') return '\0';
    char letter = char.ToUpperInvariant(macro[at + 1]);
    return letter >= '@' && letter <= '_' ? letter : '\0';
  }

  /// Without the cancels, echo switches and the repeat mark at the start: the module cancels first in any case, and
  /// nothing in the file can say "repeat".
  public static string withoutCancels(string macro) {
    int at = 0;
    while (at < macro.Length) {
      char control = controlAt(macro, at);
      if (macro[at] == '*')
        at += 1;
      else if (control == 'C' || control == 'P')
        at += 2;
      else
        break;
    }
    return macro.Substring(at);
  }

  /// Without the marks at the end that keep AutoCAD from adding a blank there: the module always ends with Enter.
  public static string withoutEnding(string macro) {
    while (true) {
      if (macro.EndsWith("+", StringComparison.Ordinal))
        macro = macro.Substring(0, macro.Length - 1);
      else if (macro.Length >= 2 && controlAt(macro, macro.Length - 2) == 'Z')
        macro = macro.Substring(0, macro.Length - 2);
      else
        return macro;
    }
  }

  public static string withSemicolons(string macro) {
    return macro.Replace("^M", ";").Replace("^m", ";");
  }

  /// Whether the text has a character that the file's reader takes for the end of the macro or of the value.
  public static bool hasFileMark(string text) {
    return text.IndexOfAny(kFileMarks) >= 0;
  }

  public static bool hasControl(string text) {
    for (int i = 0; i < text.Length; ++i)
      if (controlAt(text, i) != '\0' || char.IsControl(text[i])) return true;
    return false;
  }

  /// Whether an expression begins after the input's start. The module evaluates one at the start only.
  public static bool isExpressionInside(string text) {
    return text.IndexOf("$M=", StringComparison.OrdinalIgnoreCase) >= 0;
  }

  /// Whether the text switches or shows a menu: "$S=", "$P0=*", "=*".
  public static bool hasMenuSwitch(string text) {
    if (text.IndexOf("=*", StringComparison.Ordinal) >= 0) return true;
    for (int at = text.IndexOf('$'); at >= 0; at = text.IndexOf('$', at + 1)) {
      int end = at + 1;
      while (end < text.Length && char.IsLetterOrDigit(text[end])) ++end;
      if (end > at + 1 && end < text.Length && text[end] == '=') return true;
    }
    return false;
  }
}

}

using System.Text;

namespace MenuScribe {

/// The visible name of a menu or a menu item, and the identifier that replaces a name that cannot be written.
sealed class Caption {
  public readonly string text;
  public readonly string identifier;

  /// `name` as AutoCAD's menus write it; a name without anything to read becomes the identifier.
  public Caption(string name, string identifier) {
    string shown = readable(name);
    this.identifier = plain(identifier);
    text = shown.Length == 0 ? this.identifier : shown;
  }

  /// Names that begin so are expressions, which only AutoCAD can evaluate.
  public static bool isExpression(string name) {
    return name != null && name.StartsWith("$(", System.StringComparison.Ordinal);
  }

  /// Without shortcut, marks and mnemonics, and plain.
  public static string readable(string name) {
    return plain(withoutMnemonics(withoutMarks(withoutShortcut(name ?? ""))));
  }

  /// Without the characters that end a label, a macro or a value in the file; one blank between words.
  public static string plain(string text) {
    StringBuilder result = new StringBuilder();
    foreach (char letter in text ?? "") append(result, writable(letter));
    return result.ToString().Trim();
  }

  /// A TAB, in AutoCAD's menus mostly written as these two characters, moves the rest to the right edge.
  static string withoutShortcut(string name) {
    int end = name.IndexOf("\\t", System.StringComparison.Ordinal);
    if (end >= 0) name = name.Substring(0, end);
    end = name.IndexOf('\t');
    return end >= 0 ? name.Substring(0, end) : name;
  }

  /// "~" greys the item, "!." puts a check mark before it.
  static string withoutMarks(string name) {
    while (true) {
      if (name.StartsWith("~", System.StringComparison.Ordinal))
        name = name.Substring(1);
      else if (name.StartsWith("!.", System.StringComparison.Ordinal))
        name = name.Substring(2);
      else
        return name;
    }
  }

  static string withoutMnemonics(string name) {
    StringBuilder text = new StringBuilder();
    for (int i = 0; i < name.Length; ++i) {
      // Scripts without Latin letters have the mnemonic in parentheses after the name.
      if (i + 3 < name.Length && name[i] == '(' && name[i + 1] == '&' && name[i + 3] == ')') {
        i += 3;
        continue;
      }
      if (name[i] == '&' && i + 1 < name.Length) ++i;
      text.Append(name[i]);
    }
    return text.ToString();
  }

  static char writable(char letter) {
    switch (letter) {
      case '{': return '(';
      case '}': return ')';
      case '|': return '/';
      case '#': return ' ';
      default: return char.IsControl(letter) ? ' ' : letter;
    }
  }

  static void append(StringBuilder text, char letter) {
    if (letter == ' ' && text.Length > 0 && text[text.Length - 1] == ' ') return;
    text.Append(letter);
  }
}

}

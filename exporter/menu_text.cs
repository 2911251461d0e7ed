using System;
using System.Collections.Generic;
using System.IO;
using System.Text;

namespace MenuScribe {

/// The menu file's contents:
///
///     [MenuBar]
///     IDENTIFIER = {LABEL}MACRO|HELP
///     [Modes]
///     NAME = explanation
///
/// The module counts the file as loaded once it has a mode, so the modes come last: a file caught half-written is read
/// again. A blank line would end a section.
sealed class MenuText {
  const string kLineEnd = "\r\n";
  const string kPathSeparator = " > ";
  /// What a reader of bytes takes for the end of a label, and for the end of an input, a macro or a value.
  const string kLabelMarks = "{}|#\r\n";
  const string kMacroMarks = ";|#\r\n";
  /// The place of a name is the module's number of the mode.
  static readonly string[] kModes = {
    "Unknown = nothing has been moved yet",
    "2D = on a layout's sheet",
    "3D = in the model or a viewport",
  };

  readonly AnsiText mText;
  readonly MemoryStream mBytes = new MemoryStream();
  readonly Dictionary<string, int> mKeys = new Dictionary<string, int>(StringComparer.OrdinalIgnoreCase);
  readonly int[] mLosses = new int[Losses.count];

  /// Entries in the file; of these, how many end where their macro waits for the user.
  public int entries { get; private set; }
  public int cuts { get; private set; }

  public MenuText(Encoding encoding, IEnumerable<MenuItem> items) {
    mText = new AnsiText(encoding);
    writeLine("[MenuBar]");
    foreach (MenuItem item in items) write(item);
    writeLine("[Modes]");
    foreach (string mode in kModes) writeLine(mode);
  }

  public byte[] bytes() {
    return mBytes.ToArray();
  }

  public int lossesOf(Loss loss) {
    return mLosses[(int)loss];
  }

  void write(MenuItem item) {
    MacroText macro = MacroText.rewrite(item.command);
    Loss loss = macro.loss;
    if (loss == Loss.None && !mText.isWritable(macro.text, kMacroMarks)) loss = Loss.CodePage;
    if (loss != Loss.None) {
      ++mLosses[(int)loss];
      return;
    }
    ++entries;
    if (macro.isCut) ++cuts;
    writeLine(keyOf(item.identifier) + " = {" + labelOf(item.path) + "}" + macro.text + "|" + helpOf(item.help));
  }

  /// The identifier, with a number from the second entry of the same one on. The reader ends a key at "=" or TAB and takes
  /// "#" and "[" at its start for something else.
  string keyOf(string identifier) {
    StringBuilder key = new StringBuilder();
    foreach (char letter in identifier) key.Append(isForKey(letter) ? letter : '_');
    int count;
    mKeys.TryGetValue(key.ToString(), out count);
    mKeys[key.ToString()] = ++count;
    return count == 1 ? key.ToString() : keyOf(key + "." + count);
  }

  static bool isForKey(char letter) {
    return letter < 128 && (char.IsLetterOrDigit(letter) || letter == '_' || letter == '.' || letter == '-');
  }

  string labelOf(Caption[] path) {
    string[] parts = new string[path.Length];
    for (int i = 0; i < path.Length; ++i) parts[i] = shown(path[i]);
    return string.Join(kPathSeparator, parts);
  }

  string shown(Caption caption) {
    if (mText.isWritable(caption.text, kLabelMarks)) return caption.text;
    return mText.isWritable(caption.identifier, kLabelMarks) ? caption.identifier : "?";
  }

  string helpOf(string help) {
    string text = Caption.plain(help);
    return mText.isWritable(text, kLabelMarks) ? text : "";
  }

  void writeLine(string line) {
    byte[] bytes = mText.bytes(line + kLineEnd);
    mBytes.Write(bytes, 0, bytes.Length);
  }
}

}

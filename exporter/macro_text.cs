using System.Collections.Generic;

namespace MenuScribe {

/// A menu macro in the form of the menu file.
///
/// The module sends two Esc, then each input between semicolons followed by Enter; an empty input is an Enter alone,
/// none stands after a semicolon at the very end, and an input that begins with "M=" is evaluated by menucmd. What AutoCAD
/// would do with the macro and the module cannot, makes it unwritable: `loss` says why, and `text` is empty.
sealed class MacroText {
  public readonly string text;
  public readonly Loss loss;
  /// The macro waits for the user somewhere; `text` ends there, and the user goes on by hand.
  public readonly bool isCut;

  MacroText(string text, Loss loss, bool isCut) {
    this.text = text;
    this.loss = loss;
    this.isCut = isCut;
  }

  public static MacroText rewrite(string command) {
    string joined = MacroSyntax.joinLines(command);
    if (joined.Length == 0) return lost(Loss.NoMacro);
    string macro = MacroSyntax.withoutEnding(MacroSyntax.withoutCancels(MacroSyntax.withCarets(joined)));
    if (macro.Length == 0) return lost(Loss.OnlyCancels);
    InputReader reader = new InputReader(MacroSyntax.withSemicolons(macro));
    Loss loss = reader.readAll();
    if (loss != Loss.None) return lost(loss);
    return new MacroText(joinedInputs(reader.inputs), Loss.None, reader.isCut);
  }

  static MacroText lost(Loss loss) {
    return new MacroText("", loss, false);
  }

  /// The Enter that the module sends after the last input stands for that input's trailing blanks, of which AutoCAD takes
  /// the first as Enter; kept, they would repeat the command. An input of blanks only is an Enter and becomes an empty one.
  static string joinedInputs(List<string> inputs) {
    int last = inputs.Count - 1;
    string trimmed = inputs[last].TrimEnd(new[] {' '});
    bool isEnter = trimmed.Length == 0 && inputs[last].Length != 0;
    inputs[last] = trimmed;
    return string.Join(";", inputs.ToArray()) + (isEnter ? ";" : "");
  }
}

}

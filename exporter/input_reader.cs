using System;
using System.Collections.Generic;

namespace MenuScribe {

/// Splits a macro into the inputs that the module sends one after another.
sealed class InputReader {
  const string kEvaluate = "$M=";
  /// Start of an input that the module evaluates.
  const string kEvaluateInFile = "M=";

  readonly string mMacro;
  int mAt;
  /// After its first expression AutoCAD evaluates the rest of the macro too: there "$(" and quotes would not be sent as
  /// they are.
  bool mIsEvaluated;

  public readonly List<string> inputs = new List<string>();
  public bool isCut { get; private set; }

  public InputReader(string macro) {
    mMacro = macro;
  }

  public Loss readAll() {
    while (true) {
      Loss loss = isAtExpression() ? readExpression() : readPlain();
      if (loss != Loss.None) return loss;
      if (isCut) return lossOfCut();
      if (mAt == mMacro.Length) return Loss.None;
      ++mAt;
    }
  }

  bool isAtExpression() {
    return string.Compare(mMacro, mAt, kEvaluate, 0, kEvaluate.Length, StringComparison.OrdinalIgnoreCase) == 0;
  }

  Loss readPlain() {
    int end = mMacro.IndexOf(';', mAt);
    if (end < 0) end = mMacro.Length;
    string input = mMacro.Substring(mAt, end - mAt);
    int pause = input.IndexOf('\\');
    isCut = pause >= 0;
    if (isCut) input = input.Substring(0, pause);
    Loss loss = lossOfPlain(input);
    inputs.Add(input);
    mAt = end;
    return loss;
  }

  Loss lossOfPlain(string input) {
    if (MacroSyntax.hasFileMark(input)) return Loss.FileMark;
    if (MacroSyntax.hasControl(input)) return Loss.ControlCharacter;
    if (MacroSyntax.isExpressionInside(input)) return Loss.Diesel;
    if (MacroSyntax.hasMenuSwitch(input)) return Loss.MenuSwitch;
    // Literal text in AutoCAD, but the module would evaluate it.
    if (input.StartsWith(kEvaluateInFile, StringComparison.Ordinal)) return Loss.Diesel;
    bool isChanged = input.IndexOf('"') >= 0 || input.IndexOf("$(", StringComparison.Ordinal) >= 0;
    return mIsEvaluated && isChanged ? Loss.Diesel : Loss.None;
  }

  Loss readExpression() {
    int start = mAt + kEvaluate.Length;
    int end = endOfExpression(start);
    string expression = withoutCancels(mMacro.Substring(start, end - start));
    // A semicolon would split the expression, and a backslash is a pause.
    if (expression.IndexOfAny(new[] {';', '\\'}) >= 0) return Loss.Diesel;
    if (MacroSyntax.hasFileMark(expression)) return Loss.FileMark;
    if (MacroSyntax.hasControl(expression)) return Loss.ControlCharacter;
    // The module puts the input unchanged between the quotes of an AutoLISP string, so quotes are escaped here.
    inputs.Add(kEvaluateInFile + expression.Replace("\"", "\\\""));
    mIsEvaluated = true;
    mAt = end;
    return Loss.None;
  }

  /// The first semicolon outside all parentheses and quotes: text there is no part of an expression, and AutoCAD takes it
  /// as macro text unchanged.
  int endOfExpression(int start) {
    int depth = 0;
    bool isQuoted = false;
    for (int i = start; i < mMacro.Length; ++i) {
      char letter = mMacro[i];
      if (letter == '"') isQuoted = !isQuoted;
      if (isQuoted) continue;
      if (letter == '(') ++depth;
      if (letter == ')' && depth > 0) --depth;
      if (letter == ';' && depth == 0) return i;
    }
    return mMacro.Length;
  }

  /// The module cancels before it sends. An Esc in the result of the expression would be sent as text.
  static string withoutCancels(string expression) {
    for (int at = 0; at < expression.Length;) {
      char control = MacroSyntax.controlAt(expression, at);
      if (control == 'C' || control == 'P')
        expression = expression.Remove(at, 2);
      else
        ++at;
    }
    return expression;
  }

  /// What stands before a pause is worth sending when there is something, and when it is no half of an AutoLISP
  /// expression: AutoCAD would wait for the other half.
  Loss lossOfCut() {
    string sent = string.Join(";", inputs.ToArray());
    return sent.Trim().Length == 0 || isOpen(sent) ? Loss.Pause : Loss.None;
  }

  static bool isOpen(string text) {
    int depth = 0;
    bool isQuoted = false;
    foreach (char letter in text) {
      if (letter == '"' && depth > 0) isQuoted = !isQuoted;
      if (isQuoted) continue;
      if (letter == '(') ++depth;
      if (letter == ')') --depth;
    }
    return depth > 0;
  }
}

}

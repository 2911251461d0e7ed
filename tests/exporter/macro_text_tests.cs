using System.Text;
using MenuScribe;

static class MacroTextTests {
  /// Pairs of a macro and what the file has for it.
  static void written(params string[] pairs) {
    for (int i = 0; i < pairs.Length; i += 2) {
      MacroText macro = MacroText.rewrite(pairs[i]);
      Checks.equal(macro.loss, Loss.None, "loss of <" + pairs[i] + ">");
      Checks.equal(macro.text, pairs[i + 1], "text of <" + pairs[i] + ">");
    }
  }

  static void lost(Loss loss, params string[] macros) {
    foreach (string macro in macros) {
      Checks.equal(MacroText.rewrite(macro).loss, loss, "loss of <" + macro + ">");
      Checks.equal(MacroText.rewrite(macro).text, "", "text of <" + macro + ">");
    }
  }

  public static void CancelsAtTheStartAreDropped() {
    written("^C^C_line", "_line", "^C_line", "_line", "^c^C^c_line", "_line", "*^C^C_donut", "_donut",
            "^C^C^P_line", "_line", "^P^C^C_line", "_line", "*_point", "_point");
  }

  public static void CancelCharactersThemselvesCountToo() {
    written("\x03\x03_line", "_line");
  }

  public static void ApostropheOfATransparentCommandStays() {
    written("'_zoom _p", "'_zoom _p");
  }

  public static void ControlMIsEnter() {
    written("_layer^M_set^m0", "_layer;_set;0");
  }

  public static void SemicolonsStayAsTheyAre() {
    written("_line;0,0;1,1;;", "_line;0,0;1,1;;", "_regen;", "_regen;", ";", ";", "^C^C;;", ";;");
  }

  public static void BlanksInsideAnInputStay() {
    written("_-view _top", "_-view _top", "_line ;", "_line ;", "_text; two  words;1", "_text; two  words;1",
            "^C^C _line", " _line");
  }

  public static void BlanksAtTheEndAreTheModulesEnter() {
    written("_line ", "_line", "_zoom;_e   ", "_zoom;_e", "(princ) ", "(princ)");
  }

  public static void InputOfBlanksOnlyAtTheEndIsAnEnter() {
    written("_select;_l; ", "_select;_l;;", "^C^C ", ";");
  }

  public static void PauseEndsWhatIsSent() {
    written("_circle \\_d 5", "_circle", "_copybase;\\", "_copybase;", "_-insert;bolt;\\1;1;0", "_-insert;bolt;",
            "_dim;_hor;;\\", "_dim;_hor;;");
    Checks.isTrue(MacroText.rewrite("_circle \\").isCut, "a macro that waits is cut");
    Checks.isTrue(!MacroText.rewrite("_circle ").isCut, "one that does not is not");
  }

  public static void PauseWithNothingBeforeItLeavesNothing() {
    lost(Loss.Pause, "\\_line", "^C^C\\", "^C^C \\_line");
  }

  public static void PauseInsideALispExpressionIsLost() {
    lost(Loss.Pause, "(sslength (ssget \\))", "(command \"_line\" \"a\\b\")");
    written("(princ \"(\");_line;\\", "(princ \"(\");_line;", "_text;5'6\";\\", "_text;5'6\";");
  }

  public static void ExpressionAtAnInputsStartIsEvaluatedByTheModule() {
    written("$M=$(getvar,users1)", "M=$(getvar,users1)", "^C^C_tilemode;$M=$(-,1,$(getvar,tilemode))",
            "_tilemode;M=$(-,1,$(getvar,tilemode))", "_cvport;$m=$(getvar,cvport);_regen",
            "_cvport;M=$(getvar,cvport);_regen", "$M=a;$M=b;c", "M=a;M=b;c", "$M=$(getvar,x) ", "M=$(getvar,x)",
            "$M=$(if,1,\"(\");_line", "M=$(if,1,\\\"(\\\");_line");
  }

  public static void CancelsInsideAnExpressionAreDropped() {
    written("$M=$(if,1,^C^C_line,^P_arc)", "M=$(if,1,_line,_arc)");
  }

  public static void QuotesInsideAnExpressionAreEscapedForLisp() {
    written("$M=$(if,1,\"a,b\")", "M=$(if,1,\\\"a,b\\\")");
  }

  public static void SemicolonOrPauseInsideAnExpressionIsLost() {
    lost(Loss.Diesel, "$M=$(if,1,_line;)", "$M=$(if,1,\"a;b\")", "$M=$(if,1,_line^M)", "$M=$(if,1,\\)", "$M=a \\",
         "$M=$(if,1,\"a;b)");
  }

  public static void ExpressionElsewhereInAnInputIsLost() {
    lost(Loss.Diesel, "_zoom $M=$(getvar,x)", "_zoom; $M=$(getvar,x)", "a$m=b");
  }

  public static void TextThatTheModuleWouldEvaluateIsLost() {
    lost(Loss.Diesel, "M=abc", "_style;M=abc");
    written("m=abc", "m=abc", "_style;M", "_style;M");
  }

  public static void RestAfterAnExpressionThatAutoCadEvaluatesTooIsLost() {
    lost(Loss.Diesel, "$M=a;$(getvar,x)", "$M=a;\"b\"");
    written("\"b\";$M=a", "\"b\";M=a");
  }

  public static void MenuSwitchesAreLost() {
    lost(Loss.MenuSwitch, "$S=ACAD.X", "_line;$I=img", "$P0=* ", "$B=x", "$P5=x $P5=*", "a =*");
    written("_layer;_f;*", "_layer;_f;*", "$(x", "$(x", "cost$5", "cost$5");
  }

  public static void OtherControlCharactersAreLost() {
    foreach (char letter in "ABDEFGHIJKLNOQRSTUVWXY")
      lost(Loss.ControlCharacter, "_line;^" + letter, "_line^" + char.ToLowerInvariant(letter) + " x");
    lost(Loss.ControlCharacter, "_line;^C^C_arc", "_line;^P", "a^Zb", "^[", "a\x02", "a\x7f", "$M=$(x,^B)");
  }

  public static void CaretWithoutALetterStays() {
    written("2^3", "2^3", "a^", "a^");
  }

  public static void EndingThatSavesTheBlankIsDropped() {
    written("(foo)^Z", "(foo)", "_line ^z^Z", "_line", "_line+", "_line");
  }

  public static void LinesThatGoOnAreJoined() {
    written("(if a+\r\n b)", "(if a b)", "_line;+\n0,0", "_line;0,0", "a+\rb", "ab");
  }

  public static void MarksOfTheFileAreLost() {
    lost(Loss.FileMark, "_insert;room#4", "a|b", "a\r\nb", "a\nb", "a\rb", "$M=$(x,a|b)");
    written("_circle \\5#6|7", "_circle");
  }

  public static void ItemWithoutAMacroIsNoEntry() {
    lost(Loss.NoMacro, null, "");
    lost(Loss.OnlyCancels, "^C^C", "*^C", "^C^C^Z");
  }
}

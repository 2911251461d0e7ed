using System;
using System.Text;

/// A random macro, put together so that what the menu file must have for it is known without the exporter.
sealed class RandomMacro {
  readonly RandomNumbers mRandom;
  readonly bool mIsJapanese;
  readonly StringBuilder mCommand = new StringBuilder();
  readonly StringBuilder mWritten = new StringBuilder();
  bool mIsLost;
  bool mIsEvaluated;

  public string command { get { return mCommand.ToString(); } }
  /// Null when the macro cannot be in the file.
  public string written { get { return mIsLost ? null : mWritten.ToString(); } }

  public RandomMacro(RandomNumbers random, bool isJapanese) {
    mRandom = random;
    mIsJapanese = isJapanese;
    mCommand.Append(random.oneOf("", "^C^C", "^C^C", "*^C^C", "^c^P", "^C^C^C", "*"));
    int inputs = 1 + random.below(5);
    for (int i = 0; i < inputs; ++i) {
      if (i > 0) addEnter();
      addInput();
    }
    if (random.once(7)) addPoison();
    addEnding();
  }

  void add(string command, string written) {
    mCommand.Append(command);
    mWritten.Append(written);
  }

  void addEnter() {
    if (mRandom.once(5)) add(";", ";");
    add(mRandom.oneOf(";", ";", "^M"), ";");
  }

  void addInput() {
    if (mRandom.once(5))
      addExpression();
    else if (mIsEvaluated)
      addSame(mRandom.oneOf("_e", "0,0,0", "_regen", "(princ)"));
    else
      addSame(mRandom.oneOf("_line", "'_zoom _p", "0,0,0", "@5<45", "_-view _top", "two  words", "{1}", "}", "C:/a/b.dwg",
                            "(setq a \"b c\")", "(princ \"(\")", "m=x", "M", "cost$5", "2^3", "5'6\"", "&", "=", "[x]",
                            mIsJapanese ? "\u30bd\u56f3" : "gr\u00fcn"));
  }

  void addSame(string text) {
    add(text, text);
  }

  void addExpression() {
    mIsEvaluated = true;
    switch (mRandom.below(4)) {
      case 0: add("$M=$(getvar,tilemode)", "M=$(getvar,tilemode)"); break;
      case 1: add("$m=_$(if,$(=,1,2),top,front)", "M=_$(if,$(=,1,2),top,front)"); break;
      case 2: add("$M=$(if,1,\"a,b\")", "M=$(if,1,\\\"a,b\\\")"); break;
      default: add("$M=$(if,1,^C^C_line,^P_arc)", "M=$(if,1,_line,_arc)"); break;
    }
  }

  /// An input that costs the whole macro.
  void addPoison() {
    mIsLost = true;
    addEnter();
    mCommand.Append(mRandom.oneOf("$S=A", "^B", "a^C", "room#4", "x|y", "M=plain", "a\nb", "x $M=y", "a\tb", "$M=$(if,1,a;b)",
                                  mIsJapanese ? "\u30dd" : "\u0443\u043b", mIsJapanese ? "\u0411|" : "\u5370"));
  }

  /// An ending that leaves what has been written as it is, or adds an Enter.
  void addEnding() {
    switch (mRandom.below(mIsEvaluated ? 6 : 8)) {
      case 0: add(";", ";"); break;
      case 1: add(" ", ""); break;
      case 2: add("   ", ""); break;
      case 3: add("^Z", ""); break;
      case 4: add(" ^Z+", ""); break;
      case 5: break;
      case 6: add(" \\_more;x#|", ""); break;
      default: add("; \\1", ";;"); break;
    }
  }
}

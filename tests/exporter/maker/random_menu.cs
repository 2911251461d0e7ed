using System.Collections.Generic;
using System.IO;
using System.Text;

/// Random menus of one customization file, and the entries that the menu file must have for them, in their order.
sealed class RandomMenu {
  const int kDeepest = 3;

  readonly RandomNumbers mRandom;
  readonly bool mIsJapanese;
  readonly CuiWriter mFile = new CuiWriter();
  readonly StringBuilder mExpected = new StringBuilder();
  readonly List<RandomMacro> mMacros = new List<RandomMacro>();
  readonly Dictionary<int, bool> mUsed = new Dictionary<int, bool>();
  /// Past the menu bar a macro comes once.
  bool mIsOnce;
  int mMenus;
  int mItems;

  public readonly Encoding encoding;

  public RandomMenu(RandomNumbers random) {
    mRandom = random;
    mIsJapanese = random.once(3);
    encoding = Encoding.GetEncoding(mIsJapanese ? 932 : random.once(2) ? 1252 : 28591);
    int menus = random.below(5);
    for (int i = 0; i < menus; ++i) mFile.show(addMenu("POP" + (1 + random.below(400)), 0, true), true);
    mFile.show(addMenu("POP400", 0, false), false);
    mIsOnce = true;
    if (random.once(2)) addMenu("POP501", 0, true);
    if (random.once(2)) addPanel();
    for (int i = random.below(4); i > 0; --i) addMacro();
    for (int i = 0; i < mMacros.Count; ++i)
      if (!mUsed.ContainsKey(i)) expect(labelOfMacro(i), i);
  }

  public void write(string folder) {
    mFile.write(folder);
    File.WriteAllBytes(Path.Combine(folder, "expected"), encoding.GetBytes(mExpected.ToString()));
  }

  string addMenu(string alias, int depth, bool isShown) {
    string identifier = "PM_" + mMenus++;
    StringBuilder elements = new StringBuilder();
    for (int i = mRandom.below(depth == 0 ? 12 : 6); i > 0; --i) elements.Append(addElement(depth, isShown));
    mFile.addMenu(identifier, alias, decorated("Menu"), elements.ToString());
    return identifier;
  }

  string addElement(int depth, bool isShown) {
    int kind = mRandom.below(12);
    if (kind == 0) return CuiWriter.separator();
    if (kind == 1) return CuiWriter.item("I", "ID_Gone", "Gone");
    if (kind == 2 && depth < kDeepest) return CuiWriter.submenu(addMenu(null, depth + 1, isShown));
    // What is not shown belongs to the other commands, by its macros.
    if (!isShown) return CuiWriter.item("I", "ID_" + addMacro(), null);
    bool isNew = mIsOnce || mMacros.Count == 0 || !mRandom.once(6);
    int macro = isNew ? addMacro() : mRandom.below(mMacros.Count);
    if (!isNew && !mUsed.ContainsKey(macro)) macro = addMacro();
    return addItem(macro);
  }

  string addItem(int macro) {
    int number = mItems++;
    bool isNamed = mRandom.once(2);
    expect(isNamed ? "Item " + number : labelOfMacro(macro), macro);
    return CuiWriter.item("PMI_" + number, "ID_" + macro, isNamed ? decorated("Item " + number) : null);
  }

  void addPanel() {
    StringBuilder buttons = new StringBuilder();
    for (int i = mRandom.below(5); i > 0; --i) {
      int macro = addMacro();
      buttons.Append(CuiWriter.button("ID_" + macro));
      expect(labelOfMacro(macro), macro);
    }
    mFile.addPanel("RBN", buttons.ToString());
  }

  int addMacro() {
    int number = mMacros.Count;
    RandomMacro macro = new RandomMacro(mRandom, mIsJapanese);
    mMacros.Add(macro);
    mFile.addMacro("ID_" + number, decorated("Macro " + number), macro.command);
    return number;
  }

  static string labelOfMacro(int number) {
    return "Macro " + number;
  }

  void expect(string label, int macro) {
    mUsed[macro] = true;
    if (mMacros[macro].written != null) mExpected.Append(label).Append('\t').Append(mMacros[macro].written).Append('\n');
  }

  /// The name with what menus write around a name, and with what the file cannot hold.
  string decorated(string name) {
    string letter = mIsJapanese ? "\u753b " : "\u00fc ";
    return mRandom.oneOf("", "", "~", "!.", "&", "~&", "{", "}", "#", "|", letter) + name +
           mRandom.oneOf("", "", "...", "\\tF3", "\tF3", "}", "#2", " | b", "=", ";", "(&X)", "\r\n");
  }
}

using System;
using System.Collections.Generic;
using System.Text;
using MenuScribe;

static class MenuTextTests {
  static readonly Encoding kLatin = Encoding.GetEncoding(28591);
  static readonly Encoding kJapanese = Encoding.GetEncoding(932);

  // In code page 932 the second bytes of these two are those of "|" and "}".
  const string kBarLetter = "\u30dd";
  const string kBraceLetter = "\u30de";

  static MenuItem item(string identifier, string label, string command, string help) {
    return new MenuItem {identifier = identifier, path = new[] {new Caption("Menu", "PM"), new Caption(label, "ID")},
                         command = command, help = help};
  }

  static string[] entries(Encoding encoding, params MenuItem[] items) {
    string text = encoding.GetString(new MenuText(encoding, items).bytes());
    int start = text.IndexOf("[MenuBar]\r\n", StringComparison.Ordinal) + 11;
    int end = text.IndexOf("[Modes]\r\n", StringComparison.Ordinal);
    return text.Substring(start, end - start).Split(new[] {"\r\n"}, StringSplitOptions.RemoveEmptyEntries);
  }

  public static void FileBeginsWithTheMenuAndEndsWithTheModes() {
    byte[] bytes = new MenuText(kLatin, new[] {item("G.1", "Line", "_line", "Help")}).bytes();
    Checks.equal(kLatin.GetString(bytes),
                 "[MenuBar]\r\nG.1 = {Menu > Line}_line|Help\r\n[Modes]\r\nUnknown = nothing has been moved yet\r\n" +
                     "2D = on a layout's sheet\r\n3D = in the model or a viewport\r\n", "file");
  }

  public static void FileHasNoByteOrderMark() {
    Checks.equal((char)new MenuText(new UTF8Encoding(true), new MenuItem[0]).bytes()[0], '[', "first byte");
  }

  public static void BarFollowsTheMacroWithoutHelpToo() {
    Checks.lines(entries(kLatin, item("G.1", "Line", "_line", null)), "G.1 = {Menu > Line}_line|");
  }

  public static void HelpLosesWhatEndsAValue() {
    Checks.lines(entries(kLatin, item("G.1", "A", "_a", " No. #4 &x\r\ny "), item("G.2", "B", "_b", "\u5370")),
                 "G.1 = {Menu > A}_a|No. 4 &x y", "G.2 = {Menu > B}_b|");
  }

  public static void KeysAreUnique() {
    Checks.lines(entries(kLatin, item("G.1", "A", "_a", ""), item("G.1", "B", "_b", ""), item("g.1", "C", "_c", ""),
                         item("G.1.2", "D", "_d", "")),
                 "G.1 = {Menu > A}_a|", "G.1.2 = {Menu > B}_b|", "g.1.3 = {Menu > C}_c|", "G.1.2.2 = {Menu > D}_d|");
  }

  public static void KeysHaveNothingThatTheReaderTakesForAnother() {
    Checks.lines(entries(kLatin, item("[G]#=\t .\u00e9-_9", "A", "_a", "")), "_G_____._-_9 = {Menu > A}_a|");
  }

  public static void LeftOutItemsAreCounted() {
    MenuText text = new MenuText(kLatin, new[] {item("G.1", "A", "a|b", ""), item("G.2", "B", "_b \\", ""),
                                                item("G.3", "C", "", ""), item("G.4", "D", "_d;\u5370", "")});
    Checks.equal(text.entries, 1, "entries");
    Checks.equal(text.cuts, 1, "cuts");
    Checks.equal(text.lossesOf(Loss.FileMark), 1, "marks");
    Checks.equal(text.lossesOf(Loss.NoMacro), 1, "without a macro");
    Checks.equal(text.lossesOf(Loss.CodePage), 1, "code page");
  }

  public static void LabelThatTheCodePageLacksIsReplacedByItsIdentifier() {
    Checks.lines(entries(kLatin, item("G.1", "\u5370", "_a", "")), "G.1 = {Menu > ID}_a|");
  }

  public static void SecondByteThatLooksLikeABraceCostsTheLabel() {
    Checks.lines(entries(kJapanese, item("G.1", kBraceLetter, "_a", ""), item("G.2", "\u30bd", "_b", "")),
                 "G.1 = {Menu > ID}_a|", "G.2 = {Menu > \u30bd}_b|");
  }

  public static void SecondByteThatLooksLikeABarCostsTheLabelOrTheItem() {
    Checks.lines(entries(kJapanese, item("G.1", kBarLetter, "_a", ""), item("G.2", "B", "_b;" + kBarLetter, "")),
                 "G.1 = {Menu > ID}_a|");
  }

  public static void SecondByteOfAMacroMayLookLikeABackslashOrABrace() {
    Checks.lines(entries(kJapanese, item("G.1", "A", "_a;\u30bd" + kBraceLetter, "")),
                 "G.1 = {Menu > A}_a;\u30bd" + kBraceLetter + "|");
  }
}

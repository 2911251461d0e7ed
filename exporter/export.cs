using System.Collections.Generic;
using System.Text;

namespace MenuScribe {

/// AutoCAD's menus as they are now, and the menu file made of them. Main thread.
sealed class Export {
  readonly int mItems;
  readonly MenuText mText;

  /// The customization files that it depends on.
  public readonly List<string> paths;
  /// False when the main file could not be read: what there is then is no file to replace a good one with.
  public readonly bool isWhole;
  public readonly byte[] contents;

  public Export(Encoding encoding, Problems problems) {
    Members members = new Members(problems);
    CuiFiles files = new CuiFiles(problems, members);
    paths = files.paths;
    isWhole = files.main != null;
    List<MenuItem> items = new MenuReader(files, members, problems).items;
    mItems = items.Count;
    mText = new MenuText(encoding, items);
    contents = mText.bytes();
  }

  public string summary() {
    StringBuilder text = new StringBuilder();
    text.Append(mText.entries).Append(" of ").Append(mItems).Append(" menu items are in '");
    text.Append(Folders.menuFile()).Append("'");
    string separator = "; left out: ";
    for (Loss loss = Loss.None + 1; (int)loss < Losses.count; ++loss) {
      if (mText.lossesOf(loss) == 0) continue;
      text.Append(separator).Append(mText.lossesOf(loss)).Append(" ").Append(Losses.text(loss));
      separator = ", ";
    }
    if (mText.cuts != 0) text.Append("; ").Append(mText.cuts).Append(" end where their macro waits for input");
    return text.ToString();
  }
}

}

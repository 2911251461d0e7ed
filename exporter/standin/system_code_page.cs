using System;
using System.Reflection;
using System.Text;

namespace Standin {

/// The system's ANSI code page. Under Windows Encoding.Default is that; mono takes it from the locale, where machines
/// that build have UTF-8 only.
public static class SystemCodePage {
  const string kDefault = "defaultEncoding";

  public static void set(int codePage) {
    FieldInfo field = typeof(Encoding).GetField(kDefault, BindingFlags.Static | BindingFlags.NonPublic);
    if (field == null) throw new InvalidOperationException("this mono's Encoding has no " + kDefault);
    field.SetValue(null, Encoding.GetEncoding(codePage));
    if (Encoding.Default.CodePage != codePage) throw new InvalidOperationException("Encoding.Default stays as it was");
  }
}

}

using System;
using System.Collections.Generic;
using System.Reflection;

namespace MenuScribe {

/// Reads members of AutoCAD's objects by name, for those of which no document says whether they are properties or
/// fields. A member is looked up once a type. Main thread.
sealed class Members {
  const BindingFlags kPublic = BindingFlags.Public | BindingFlags.Instance;

  readonly Problems mProblems;
  readonly Dictionary<string, MemberInfo> mFound = new Dictionary<string, MemberInfo>();

  public Members(Problems problems) {
    mProblems = problems;
  }

  /// The member's value; null when the object is null, has no such member, or the member throws.
  public object value(object owner, string name) {
    if (owner == null) return null;
    MemberInfo member = find(owner.GetType(), name);
    PropertyInfo property = member as PropertyInfo;
    FieldInfo field = member as FieldInfo;
    try {
      if (property != null) return property.GetValue(owner, null);
      return field != null ? field.GetValue(owner) : null;
    } catch (TargetInvocationException failure) {
      mProblems.add("AutoCAD's " + owner.GetType().Name + "." + name + " fails: " + failure.InnerException.Message);
      return null;
    }
  }

  /// The same as a text, empty instead of null.
  public string text(object owner, string name) {
    object found = value(owner, name);
    return found == null ? "" : found.ToString();
  }

  MemberInfo find(Type type, string name) {
    string key = type.FullName + "." + name;
    MemberInfo member;
    if (mFound.TryGetValue(key, out member)) return member;
    member = (MemberInfo)type.GetProperty(name, kPublic) ?? type.GetField(name, kPublic);
    if (member == null) mProblems.add("AutoCAD's " + type.Name + " has no " + name);
    mFound[key] = member;
    return member;
  }
}

}

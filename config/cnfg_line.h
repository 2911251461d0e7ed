/// One line of a configuration file, split into its pieces. The pieces are views into the line; nothing is
/// copied. Any thread.
#ifndef CONFIG_CNFG_LINE_H
#define CONFIG_CNFG_LINE_H

#include <string_view>

/// | Line          | Recognised by                               | Pieces                                    |
/// |---------------|---------------------------------------------|-------------------------------------------|
/// | blank         | only blanks and TABs, or nothing            | none                                      |
/// | comment       | first other character '#'                   | leading, trailing (from '#')              |
/// | header        | first other character '[', a ']' after it   | leading, section (not trimmed), trailing  |
/// | broken header | first other character '[', no ']' after it  | none                                      |
/// | parameter     | any other first character                   | leading, key, separator, value, trailing  |
struct CnfgLine {
  enum class Kind { kBlank, kComment, kHeader, kBrokenHeader, kParameter };

  Kind kind = Kind::kBlank;
  std::string_view leading;    ///< blanks and TABs before the first other character
  std::string_view section;    ///< between '[' and the first ']' after it
  std::string_view key;        ///< up to the first '=' or TAB, without the blanks before that
  std::string_view keyBlanks;  ///< those blanks
  std::string_view separator;  ///< the run of '=' and TAB after the key
  std::string_view value;      ///< from there up to the first '#', CR or LF, not trimmed
  std::string_view trailing;   ///< the rest of the line

  static constexpr char kComment = '#';

  static CnfgLine split(std::string_view line);

  /// The name of the section that the line begins; empty for any line but a header. Cheaper than split().
  static std::string_view sectionOf(std::string_view line);

  /// A value without the NUL at its end, if there is one, and without blanks and TABs at both ends.
  static std::string_view trimmed(std::string_view value);
};

#endif

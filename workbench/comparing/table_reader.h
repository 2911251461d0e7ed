/// Reads a table of a result folder row by row; every mistake names file and line.
#ifndef WORKBENCH_TABLE_READER_H
#define WORKBENCH_TABLE_READER_H

#include "workbench/input_error.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

class TableReader {
 public:
  /// Reads the file, whose first line has to name `columns`. Throws InputError.
  TableReader(const std::filesystem::path& file, std::vector<std::string_view> columns);
  TableReader(const TableReader&) = delete;
  TableReader& operator=(const TableReader&) = delete;

  /// Goes to the next row; false after the last one. Throws InputError when it has too few or too many
  /// fields.
  bool next();
  /// The row's fields as they are in the file, with their quotes. Valid as long as the reader.
  const std::vector<std::string_view>& fields() const { return mFields; }
  std::size_t line() const { return mLine; }  ///< of the row, from 1
  std::size_t rows() const { return mRows; }  ///< read so far

  InputError error(const std::string& expected, const std::string& found) const {
    return InputError({mFile, mLine}, expected, found);
  }

 private:
  std::string_view takeRow();

  std::string mFile;
  std::vector<std::string_view> mColumns;
  std::string mText;
  std::string_view mRest;
  std::vector<std::string_view> mFields;
  std::size_t mLine = 1;
  std::size_t mLineEnds = 0;  ///< in the row: a quoted field may have some
  std::size_t mRows = 0;
};

/// A number as a table has it; also one that is infinite or none (nan). Throws InputError.
double realField(const TableReader& table, std::size_t column);

}  // namespace workbench

#endif

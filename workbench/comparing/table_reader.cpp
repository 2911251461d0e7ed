#include "workbench/comparing/table_reader.h"

#include "workbench/text_input.h"

#include <charconv>
#include <utility>

namespace workbench {
namespace {

void split(std::string_view row, std::vector<std::string_view>& fields) {
  fields.clear();
  bool isQuoted = false;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < row.size(); ++i) {
    // A doubled quote switches twice, which leaves the state as it was.
    if (row[i] == '"') isQuoted = !isQuoted;
    if (row[i] != ',' || isQuoted) continue;
    fields.push_back(row.substr(begin, i - begin));
    begin = i + 1;
  }
  fields.push_back(row.substr(begin));
}

std::string headerOf(const std::vector<std::string_view>& columns) {
  std::string header;
  for (const std::string_view column : columns) header.append(header.empty() ? "" : ",").append(column);
  return header;
}

}  // namespace

TableReader::TableReader(const std::filesystem::path& file, std::vector<std::string_view> columns)
    : mFile(file.string()), mColumns(std::move(columns)), mText(readFile(file, "a table of a run")) {
  mRest = mText;
  const std::string_view header = takeRow();
  // Compared whole: tables of another release may have other columns.
  if (header != headerOf(mColumns)) throw error("the columns " + headerOf(mColumns), inQuotes(header));
}

bool TableReader::next() {
  if (mRest.empty()) return false;
  mLine += mLineEnds;
  split(takeRow(), mFields);
  if (mFields.size() != mColumns.size())
    throw error(std::to_string(mColumns.size()) + " fields", std::to_string(mFields.size()));
  ++mRows;
  return true;
}

/// Takes a row off the rest, up to the line end that is not within quotes.
std::string_view TableReader::takeRow() {
  mLineEnds = 0;
  bool isQuoted = false;
  for (std::size_t i = 0; i < mRest.size(); ++i) {
    if (mRest[i] == '"') isQuoted = !isQuoted;
    if (mRest[i] != '\n') continue;
    ++mLineEnds;
    if (isQuoted) continue;
    const std::string_view row = mRest.substr(0, i);
    mRest.remove_prefix(i + 1);
    return row;
  }
  // Every row ends with a line end, so this one has been cut off.
  throw error("a line end after the last row", mRest.empty() ? "an empty file" : inQuotes(mRest));
}

double realField(const TableReader& table, std::size_t column) {
  const std::string_view field = table.fields()[column];
  double value = 0;
  const char* const end = field.data() + field.size();
  // Not parseReal(), which is for what users write: a module that does wrong may leave infinite numbers.
  const auto [stop, error] = std::from_chars(field.data(), end, value);
  if (error != std::errc() || stop != end) throw table.error("a number", inQuotes(field));
  return value;
}

}  // namespace workbench

#include "exports/Export.h"
#include "platform/FileNames.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <utility>

#include <xlsxwriter.h>

namespace kestrane {

namespace {

void check(lxw_error error) {
    if (error != LXW_NO_ERROR) throw RuntimeError(EIO, lxw_strerror(error));
}

// Cuts a text so that a cell can hold it: to at most kMost bytes, between two characters.
std::string cellText(std::string text) {
    constexpr std::size_t kMost = 32'767;
    if (text.size() <= kMost) return text;
    std::size_t end = kMost;
    while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    text.resize(end);
    return text;
}

// The file that the library writes; it is removed at the end.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& folder) : name_(makeUniqueFile(folder + "/kestrane-")) {}

    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove(pathOf(name_), ignored);
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& name() const { return name_; }

private:
    std::string name_;
};

// Reads a little-endian number of a zip archive.
std::uintmax_t numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
    std::uintmax_t number = 0;
    for (std::size_t i = size; i > 0; --i)
        number = number << 8U | static_cast<unsigned char>(bytes[at + i - 1]);
    return number;
}

// The number of bytes of all sheets before compression, read from the directory at the end of the workbook's file. A
// sheet of 4 GiB or more counts as 4 GiB.
std::uintmax_t bytesOfSheets(std::string_view directory) {
    constexpr std::size_t kSizeAt = 24, kNameLengthAt = 28, kNameAt = 46;
    constexpr std::string_view kEntry = "PK\x01\x02";
    std::uintmax_t sum = 0;
    for (std::size_t at = directory.find(kEntry); at != std::string_view::npos && at + kNameAt <= directory.size();
         at = directory.find(kEntry, at + kNameAt)) {
        const std::string_view name = directory.substr(at + kNameAt, numberAt(directory, at + kNameLengthAt, 2));
        if (name.starts_with("xl/worksheets/sheet")) sum += numberAt(directory, at + kSizeAt, 4);
    }
    return sum;
}

// A workbook that is being written. The library keeps the rows in temporary files and does not check that they were
// written, so this program checks it.
class Workbook {
public:
    Workbook(const std::string& name, std::string folder, const ExportTable& table, std::int64_t rowsOfSheet) :
        folder_(std::move(folder)), table_(table), rowsOfSheet_(static_cast<lxw_row_t>(rowsOfSheet)) {
        constexpr std::int64_t kManyCells = 20'000'000;
        const bool isHuge = table.lines() * static_cast<std::int64_t>(table.columns().size()) > kManyCells;
        lxw_workbook_options options = {LXW_TRUE, folder_.data(), static_cast<std::uint8_t>(isHuge)};
        book_ = workbook_new_opt(name.c_str(), &options);
        if (book_ == nullptr) raiseSystemError(ENOMEM);
    }

    ~Workbook() {
        if (book_ != nullptr) lxw_workbook_free(book_);
    }

    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    void addLine(std::span<const ExportCell> cells) {
        if (sheet_ == nullptr || row_ == rowsOfSheet_) addSheet();
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const auto column = static_cast<lxw_col_t>(i);
            if (const auto* text = std::get_if<std::string>(&cells[i])) write(column, *text);
            if (const auto* number = std::get_if<double>(&cells[i]))
                check(worksheet_write_number(sheet_, row_, column, *number, nullptr));
        }
        ++row_;
    }

    // Returns the number of bytes of the rows of all sheets.
    std::uintmax_t finish() {
        if (sheet_ == nullptr) addSheet();
        endSheet();
        check(workbook_close(std::exchange(book_, nullptr)));
        return rowBytes_;
    }

private:
    void addSheet() {
        if (sheet_ != nullptr) endSheet();
        const std::string name = sheets_ == 0 ? "Data" : "Data " + std::to_string(sheets_ + 1);
        ++sheets_;
        sheet_ = workbook_add_worksheet(book_, name.c_str());
        if (sheet_ == nullptr) raiseSystemError(ENOMEM);
        row_ = 0;
        const auto& names = table_.columns();
        for (std::size_t i = 0; i < names.size(); ++i)
            write(static_cast<lxw_col_t>(i), names[i]);
        ++row_;
    }

    // A text is written as a text, whatever it begins with.
    void write(lxw_col_t column, const std::string& text) {
        check(worksheet_write_string(sheet_, row_, column, cellText(text).c_str(), nullptr));
    }

    void endSheet() {
        std::FILE* const rows = sheet_->optimize_tmpfile;
        if (std::fflush(rows) != 0 || std::ferror(rows) != 0) raiseSystemError(errno != 0 ? errno : EIO);
        rowBytes_ += static_cast<std::uintmax_t>(std::max(std::ftell(rows), 0L));
    }

    std::string folder_;
    const ExportTable& table_;
    lxw_row_t rowsOfSheet_;
    lxw_workbook* book_ = nullptr;
    lxw_worksheet* sheet_ = nullptr;
    lxw_row_t row_ = 0;
    int sheets_ = 0;
    std::uintmax_t rowBytes_ = 0;
};

} // namespace

bool writeXlsx(const ExportTable& table, const FileSink& sink, const ExportProgress& progress,
               std::int64_t rowsOfSheet) {
    constexpr std::size_t kDirectory = 64 << 10; // enough for all of it, because a workbook has few parts
    const std::string folder = std::filesystem::temp_directory_path().string();
    const TemporaryFile file(folder);
    std::uintmax_t rowBytes = 0;
    {
        Workbook book(file.name(), folder, table, std::min(rowsOfSheet, kRowsOfSheet));
        const auto write = [&](std::span<const ExportCell> cells) { book.addLine(cells); };
        if (!table.forEachLine(write, progress)) return false;
        rowBytes = book.finish();
    }
    std::ifstream whole(pathOf(file.name()), std::ios::binary);
    std::array<char, kDirectory> piece;
    std::string end;
    while (whole.read(piece.data(), piece.size()) || whole.gcount() > 0) {
        const std::string_view bytes(piece.data(), static_cast<std::size_t>(whole.gcount()));
        sink(bytes);
        end = end.substr(end.size() - std::min(end.size(), kDirectory)).append(bytes);
    }
    if (whole.bad() || bytesOfSheets(end) < rowBytes) raiseSystemError(ENOSPC); // rows are missing
    return true;
}

} // namespace kestrane

#include "app/ExportDialog.h"

#include "app/Documents.h"
#include "explorer/NodeKeys.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace kestrane {

namespace {

constexpr std::string_view kSection = "Export";
constexpr std::string_view kFormat = "Format", kContent = "Content", kFolder = "Folder", kLeftOut = "ColumnsLeftOut";

constexpr ExportContent kContents[] = {ExportContent::AllRows, ExportContent::FileRows, ExportContent::LogRows,
                                       ExportContent::RowsInView, ExportContent::Summary};

// As they are in the store.
std::string_view wordOf(ExportContent content) {
    constexpr std::string_view kWords[] = {"AllRows", "FileRows", "LogRows", "RowsInView", "Summary"};
    return kWords[static_cast<std::size_t>(content)];
}

bool isNamedAsExport(const std::filesystem::path& name) {
    const std::string ending = name.extension().string();
    return !ending.empty() && exportFormatOf(std::string_view(ending).substr(1)).has_value();
}

} // namespace

ExportDialog::ExportDialog(Session& session, ExportSubject subject) : session_(session), subject_(std::move(subject)) {
    const SettingsStore& store = *session.state;
    format_ = exportFormatOf(store.read(kSection, kFormat, {})).value_or(ExportFormat::Csv);
    folder_ = store.read(kSection, kFolder, folderOfData());
    std::istringstream columns(store.read(kSection, kLeftOut, {}));
    for (std::string column; columns >> column;)
        leftOut_.insert(column);
    const std::vector<ExportContent> contents = Contents();
    const std::string last = store.read(kSection, kContent, wordOf(ExportContent::LogRows));
    const auto found = std::ranges::find(contents, last, wordOf);
    ChooseContent(found != contents.end() ? *found : contents.front());
}

// The folder of the selected file, or of the first one that is saved; else that of the settings.
std::string ExportDialog::folderOfData() const {
    const auto folderOf = [](const clsFile& file) { return file.FileName.substr(0, file.FileName.rfind('/') + 1); };
    const clsFile* const selected = resolve(session_, subject_.Selected).file;
    if (selected != nullptr && !folderOf(*selected).empty()) return folderOf(*selected);
    for (const auto& file : session_.OpenFiles)
        if (!folderOf(*file).empty()) return folderOf(*file);
    return session_.Options.DefaultDataDirectory;
}

std::vector<ExportDialog::Listed> ExportDialog::listed(ExportContent content) const {
    std::vector<Listed> logs;
    const auto add = [&](const std::string& key) {
        const Node node = resolve(session_, key);
        if (node.log != nullptr)
            logs.push_back({key, node.file, node.data, node.log, {1, node.log->LogIntervals.Count()}});
    };
    const auto addAll = [&](const clsFile& file) {
        for (const std::string& key : logKeys(file))
            add(key);
    };
    switch (content) {
    case ExportContent::AllRows:
    case ExportContent::Summary:
        for (const auto& file : session_.OpenFiles)
            addAll(*file);
        break;
    case ExportContent::FileRows:
        if (const clsFile* const file = resolve(session_, subject_.Selected).file; file != nullptr) addAll(*file);
        break;
    case ExportContent::LogRows:
        add(resolve(session_, subject_.Selected).log != nullptr ? subject_.Selected : subject_.Opened);
        break;
    case ExportContent::RowsInView:
        if (subject_.InView == nullptr) break;
        add(subject_.Opened);
        for (Listed& log : logs) {
            log.Log = subject_.InView;
            log.Rows = subject_.Rows;
        }
        break;
    }
    if (content != ExportContent::Summary)
        std::erase_if(logs, [](const Listed& log) { return log.Rows.From > log.Rows.To; });
    return logs;
}

std::vector<ExportContent> ExportDialog::Contents() const {
    std::vector<ExportContent> contents;
    std::ranges::copy_if(kContents, std::back_inserter(contents), [this](ExportContent content) {
        return !(content == ExportContent::AllRows && session_.OpenFiles.size() == 1 &&
                 !listed(ExportContent::FileRows).empty()) &&
               !listed(content).empty();
    });
    return contents;
}

void ExportDialog::ChooseContent(ExportContent content) {
    content_ = content;
    logs_ = listed(content);
    table_ = ExportTable();
    for (const Listed& log : logs_) {
        if (content == ExportContent::Summary) {
            table_.addSummary(log.File->FileName, log.Key, log.Data->InsSerial, *log.Log);
        } else {
            table_.addRows(log.File->FileName, log.Key, *log.Log, log.Rows);
        }
    }
    proposeName();
}

void ExportDialog::ChooseFormat(ExportFormat format) {
    format_ = format;
    proposeName();
}

void ExportDialog::Tick(const std::string& column, bool isTicked) {
    if (isTicked) {
        leftOut_.erase(column);
    } else {
        leftOut_.insert(column);
    }
}

ExportTable ExportDialog::TickedTable() const {
    return table_.withColumns([this](const std::string& column) { return IsTicked(column); });
}

void ExportDialog::ChooseName(const std::string& name) {
    name_ = name;
    isNamed_ = true;
}

void ExportDialog::proposeName() {
    const std::string ending = "." + std::string(exportWord(format_));
    if (!isNamed_) {
        name_ = folder_ + proposal() + ending;
    } else if (std::filesystem::path name = pathOf(name_); isNamedAsExport(name)) {
        name_ = name.replace_extension(ending).string();
    }
}

// The last part of a name, without its ending.
std::string ExportDialog::proposal() const {
    const Listed& first = logs_.front();
    const bool isOneFile = std::ranges::all_of(logs_, [&](const Listed& log) { return log.File == first.File; });
    const std::string ofFiles =
        isOneFile ? pathOf(first.File->FileName).stem().string() : session_.LoadText(Text::ExportAllLogsName);
    switch (content_) {
    case ExportContent::AllRows:
    case ExportContent::FileRows:
        return fileNameOf(ofFiles);
    case ExportContent::LogRows:
        return fileNameOf(first.Log->Name);
    case ExportContent::RowsInView:
        return fileNameOf(ReplaceText(session_.LoadText(Text::ExportInViewName), "^", first.Log->Name));
    case ExportContent::Summary:
        return fileNameOf(ofFiles + " " + session_.LoadText(Text::ExportSummaryName));
    }
    return {};
}

bool ExportDialog::CanExport() const {
    return !name_.empty() && std::ranges::any_of(table_.columns(), [this](const auto& name) { return IsTicked(name); });
}

bool ExportDialog::mayWrite() const {
    for (const Listed& log : logs_) {
        if (!log.Log->HasUnreadIntervals) continue;
        session_.ShowMessage(ReplaceText(session_.LoadText(Text::IntervalsNotReadAll), "^", log.Log->Name),
                             kIconExclamation);
        return false;
    }
    if (const clsFile* const open = openFileOfName(session_, name_); open != nullptr) {
        session_.ShowMessage(ReplaceText(session_.LoadText(Text::FileIsOpen), "^", open->ShortenedFileName()),
                             kIconExclamation);
        return false;
    }
    return !fileExists(name_) ||
           session_.ShowMessage(ReplaceText(session_.LoadText(Text::ExportAskReplace), "^", name_),
                                kButtonsYesNo | kIconQuestion | kDefaultSecond) == Button::Yes;
}

bool ExportDialog::Export(const ExportProgress& progress) {
    if (!pathOf(name_).is_absolute()) name_.insert(0, folder_);
    if (!pathOf(name_).has_extension()) name_ += "." + std::string(exportWord(format_));
    if (!mayWrite()) return false;
    try {
        if (!writeExport(TickedTable(), format_, name_, progress)) return false;
    } catch (const RuntimeError& error) {
        session_.ShowMessage(saveErrorText(session_, error, name_), kIconExclamation);
        return false;
    }
    remember();
    const std::string told = ReplaceText(session_.LoadText(Text::ExportDone), "^", std::to_string(table_.lines()));
    session_.frame->Tell(ReplaceText(told, "*", name_));
    return true;
}

// The export has succeeded when the choices cannot be kept, so that is no error.
void ExportDialog::remember() const {
    std::string leftOut;
    for (const std::string& column : leftOut_)
        leftOut += (leftOut.empty() ? "" : " ") + column;
    const std::string folder = pathOf(name_).parent_path().generic_string();
    try {
        session_.state->write(kSection, kFormat, exportWord(format_));
        session_.state->write(kSection, kContent, wordOf(content_));
        session_.state->write(kSection, kFolder, folder.ends_with('/') ? folder : folder + "/");
        session_.state->write(kSection, kLeftOut, leftOut);
    } catch (const RuntimeError&) {
    }
}

} // namespace kestrane

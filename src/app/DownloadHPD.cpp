#include "app/DownloadHPD.h"

#include "platform/AtomicFile.h"
#include "platform/Files.h"
#include "platform/Format.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Trimmed.h"

#include <cerrno>
#include <filesystem>

namespace kestrane {

namespace {

constexpr std::int64_t kMostBytes = 64 << 20;
constexpr std::size_t kLeastBytes = Text::MenuFile;

std::string textOf(const RuntimeError& error) {
    return std::to_string(error.Number) + ": " + error.what();
}

// Fetches the database. Nothing when the user cancelled or the reason has been shown.
std::optional<std::string> fetch(Session& session, HPDProgress& progress, bool bSilent) {
    if (!bSilent) progress.Show(0, 0);
    const HttpAnswer answer = session.http->Get(std::string(trimmed(session.Options.HPDAddress)), kMostBytes,
                                                [&](std::int64_t received, std::int64_t total) {
                                                    if (!bSilent) progress.Show(received, total);
                                                    return !progress.IsCancelled();
                                                });
    progress.Close();
    if (answer.end == HttpAnswer::End::Cancelled) return std::nullopt;
    if (answer.end == HttpAnswer::End::Complete && answer.Body.size() >= kLeastBytes) return answer.Body;
    session.frame->SetPanel(Frame::Panel::Error, answer.Reason);
    session.ShowMessage(session.LoadText(Text::DatabaseNotDownloaded), kIconExclamation);
    return std::nullopt;
}

// What is wrong with the file, and in which line.
std::string damageOf(const Session& session, const ProtectorCollection& collection, const std::string& fault) {
    const std::size_t read = collection.Protectors.size();
    const std::string line =
        read == 0 ? std::string() : ReplaceText(session.LoadText(Text::AtLine), "^", std::to_string(read + 1));
    return fault + "\r\n\r\n" + sourceOf(collection) + line;
}

} // namespace

bool LoadHPD(Session& session) {
    ProtectorCollection& collection = *session.protectors;
    collection.Damage.clear();
    try {
        if (loadProtectors(sourceOf(collection), collection.Protectors)) return true;
        collection.Damage = damageOf(session, collection, session.LoadText(Text::TextBehindEmptyLine));
        session.ShowMessage(collection.Damage, kIconExclamation);
        return true;
    } catch (const RuntimeError& error) {
        const bool isMissing = error.Number == ENOENT;
        if (!isMissing) collection.Damage = damageOf(session, collection, textOf(error));
        session.ShowMessage(isMissing ? ReplaceText(session.LoadText(Text::FileNotFound), "^", sourceOf(collection))
                                      : collection.Damage,
                            kIconExclamation);
        return false;
    }
}

bool SaveReadable(Session& session, const ProtectorCollection& collection, const std::string& path) {
    std::error_code none; // ignored: there may be no such file
    if (!collection.Damage.empty() && std::filesystem::equivalent(pathOf(path), pathOf(collection.File), none)) {
        session.ShowMessage(ReplaceText(session.LoadText(Text::DamagedFileSaveAs), "^", collection.File),
                            kIconExclamation);
        return false;
    }
    saveProtectors(path, collection.Protectors);
    return true;
}

bool DownloadHPD(Session& session, HPDProgress& progress, bool bSilent) {
    ProtectorCollection& collection = *session.protectors;
    if (session.ShowMessage(session.LoadText(Text::AskReplaceDatabase),
                            kButtonsOkCancel | kIconQuestion | kDefaultSecond) != Button::Ok)
        return false;
    const std::optional<std::string> body = fetch(session, progress, bSilent);
    if (!body) return false;
    try {
        const std::string text = databaseText(*body);
        makeFolderOf(collection.File);
        keepOldDatabase(sourceOf(collection), collection.File);
        std::vector<clsHP> protectors;
        // A text that cannot be read raises, so it never replaces the old one.
        const bool isWhole = readProtectors(text, protectors);
        if (protectors.empty()) throw RuntimeError(kErrorCorruptFile, session.LoadText(Text::CorruptFileError));
        // Backups go in time.
        if (!isWholeDatabase(collection.File)) keepDamagedFile(collection.File);
        writeFileAtomically(collection.File, [&](const FileSink& sink) { sink(text); });
        collection.Protectors = std::move(protectors);
        collection.IsChanged = false;
        collection.Damage =
            isWhole ? std::string() : damageOf(session, collection, session.LoadText(Text::TextBehindEmptyLine));
    } catch (const RuntimeError& error) {
        session.ShowMessage(textOf(error), kIconExclamation, session.LoadText(Text::AMessageFrom));
        return false;
    }
    if (!collection.Damage.empty()) session.ShowMessage(collection.Damage, kIconExclamation);
    if (!bSilent) session.ShowMessage(session.LoadText(Text::DownloadComplete), kIconInformation);
    return true;
}

} // namespace kestrane

// What the texts are for. A text that is in no list is shown.
#include <algorithm>
#include <array>
#include <iterator>

#include "resources/TextTable.h"

namespace kestrane {

namespace {

// Words that are written into files or the settings, or compared with words from there. When one of them were
// translated, a file would depend on the language of the user who made it.
constexpr Text::Id kData[] = {
    Text::FileWordBroadband,
    Text::FileWordFullOctave,
    Text::FileWordThirdOctave,
    Text::FileWordNoiseAtWork,
    Text::FileWordEnvironmental,
    Text::OctaveWord,
    // The history of a document
    Text::HistorySaved,
    Text::ChangedByOther,
    Text::UnreadableHistoryLine,
    Text::HistoryDownload,
    Text::HistoryDownloadRecovered,
    Text::HistoryRecalculatedOnOpening,
};

// Addresses and telephone numbers of both brands.
constexpr Text::Id kFirstContact = Text::ContactHomePage;
constexpr Text::Id kLastContact = Text::SecondShop;

// What can be said on standard error. A text that is also part of a result is not one of these, because results are
// the same for every user.
constexpr Text::Id kMessages[] = {
    // Progress of a download, of loading, calculating and printing
    Text::Downloading,
    Text::LogOf,
    Text::BytesReceived,
    Text::KBReceived,
    Text::AboutLeft,
    Text::IdentifyingInstrument,
    Text::DownloadingListOfLogs,
    Text::DownloadingCumulative,
    Text::DownloadingIntervals,
    Text::DownloadingOctave,
    Text::DownloadingLog,
    Text::LoadingIntervals,
    Text::LoadingCompleted,
    Text::Calculating,
    Text::CalculatingCompleted,
    Text::PrintingPage,
    Text::Interrupted,
    Text::ReadingDataFiles,
    // Questions
    Text::AskRemoveDataset,
    Text::AskRemoveBroadbandLogs,
    Text::AskRemoveBroadbandLog,
    Text::AskRemoveOctaveLogs,
    Text::AskRemoveOctaveLog,
    Text::Ask3DTakesTime,
    Text::AskMergeDownload,
    Text::AskAddCopy,
    Text::AreYouSurePlain,
    Text::AskRecalculationTakesTime,
    Text::AskConvertIntervals,
    Text::AskReplace,
    Text::AreYouSure,
    Text::LoseChanges,
    Text::AskReplaceDatabase,
    Text::AskProceed,
    Text::AskRecalculateOpenedLog,
    Text::AskRecalculate,
    Text::AskSaveChanges,
    Text::AskSaveExposureRows,
    Text::AskTryAgain,
    Text::AskWeighting,
    Text::AskGetDocumentReader,
    Text::FinishAnyway,
    // Faults and refusals
    Text::Error,
    Text::DownloadHasFailed,
    Text::TranscriptNotSaved,
    Text::FolderCannotBeOpened,
    Text::RangeInvalid,
    Text::NoAvailableData,
    Text::SelectionError,
    Text::LogIsNotZWeighted,
    Text::IntervalsNotConverted,
    Text::CannotFind,
    Text::LogsWentInto,
    Text::StepChangesOtherFile,
    Text::NameNotEntered,
    Text::NameInUse,
    Text::TypeNotEntered,
    Text::MeansNotNumeric,
    Text::DeviationsNotNumeric,
    Text::HMLNotNumeric,
    Text::SNRNotNumeric,
    Text::NRRNotNumeric,
    Text::CorrectionNotPossible,
    Text::DownloadComplete,
    Text::AMessageFrom,
    Text::DatabaseNotDownloaded,
    Text::AtLine,
    Text::TextBehindEmptyLine,
    Text::DatabaseNotReadToItsEnd,
    Text::DamagedFileKept,
    Text::DamagedFileSaveAs,
    Text::InvalidCriterion,
    Text::InvalidExchangeRate,
    Text::InvalidUserCalibrationDate,
    Text::ExposureLengthInvalid,
    Text::StillLoading,
    Text::ExposureTimeOutOfRange,
    Text::ExposureTimeTooShort,
    Text::SettingsNotStored,
    Text::PortNotOpened,
    Text::NoValidPort,
    Text::NoSuchDevice,
    Text::NoPermission,
    Text::PortInUse,
    Text::NoSerialPort,
    Text::PortWentAway,
    Text::ErrorSaving,
    Text::FileIsOpen,
    Text::SavedWhenLoaded,
    Text::NoHelpFile,
    Text::NotCompatibleAfterSaving,
    Text::FilesWithoutLogsNotSaved,
    Text::IncludeNotSelected,
    Text::BothIntervalsRequired,
    Text::RangeBackwards,
    Text::LinePrefix,
    Text::NoPrinter,
    Text::PrinterTookNotAll,
    Text::InstrumentNotResponding,
    Text::ErrorDownloading,
    Text::DownloadAborted,
    Text::OnlyTallixClock,
    Text::NoLogsOnInstrument,
    Text::NoSuchInstrumentLog,
    Text::DocumentReaderNotFound,
    Text::UnableToOpen,
    Text::FileNotCompatible,
    Text::WeightingHasNoEffect,
    Text::SaveLogFirst,
    Text::FileNotFound,
    Text::CorruptFileError,
    Text::TheDownloadWasNotComplete,
    Text::IntervalsNotRead,
    Text::SettingNotOfItsKind,
    Text::NoLogOfKey,
    Text::NeedsADisplay,
    Text::SettingsNotRead,
    Text::NeedsPackage,
    Text::IntervalsNotReadAll,
    Text::ErrorConnectingToPrinter,
    Text::HistoryNotSaved,
    Text::HistoryNotOurs,
    Text::HistoryTooLarge,
    Text::ChangedByOtherTold,
    Text::LogoNotUsed,
    Text::Exporting,
    Text::ExportDone,
    Text::ExportAskReplace,
    Text::RecoveryAskDiscard,
    Text::RecoveryDamaged,
    Text::RecoveryFailed,
    Text::ChangedByAnother,
    Text::OpenElsewhere,
    Text::RenameOpenElsewhere,
    Text::SettingsNotWritten,
    Text::CrashReported,
    Text::BackupMade,
    Text::TranscriptKept,
    Text::NoWholeLog,
    Text::NoDataFor,
    Text::OtherLogsOnInstrument,
};

constexpr auto kSortedMessages = [] {
    auto sorted = std::to_array(kMessages);
    std::ranges::sort(sorted);
    return sorted;
}();

} // namespace

TextUse UseOf(Text::Id id) {
    if (std::ranges::find(kData, id) != std::end(kData) || (id >= kFirstContact && id <= kLastContact))
        return TextUse::Data;
    return std::ranges::binary_search(kSortedMessages, id) ? TextUse::Message : TextUse::Shown;
}

} // namespace kestrane

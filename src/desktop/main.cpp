// kestrane: the desktop program.
#include "app/Documents.h"
#include "app/StartUp.h"
#include "desktop/mdiMain.h"
#include "dialogs/DialogFit.h"
#include "dialogs/Icons.h"
#include "dialogs/Palettes.h"
#include "dialogs/Words.h"
#include "dialogs/frmSplash.h"
#include "platform/CrashReport.h"
#include "platform/IniFile.h"
#include "platform/RunningProgram.h"
#include "platform/RuntimeError.h"
#include "platform/UserFolders.h"
#include "platform/connection/QtComm.h"
#include "platform/connection/QtHttp.h"
#include "platform/desktop/DesktopMessages.h"
#include "platform/desktop/OneProcess.h"
#include "platform/qt/QtEventPump.h"
#include "protection/ProtectorDatabase.h"
#include "server/KestraneThread.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QStandardPaths>
#include <QTranslator>

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace kestrane {

namespace {

constexpr auto kCompany = KESTRANE_COMPANY;
constexpr std::string_view kHelp = "Usage: kestrane [--new-instance] [FILE...]\n"
                                   "\n"
                                   "Opens noise measurements: .xml .zdp .zd2 .zd4 .zdf .zdo .csv .log\n"
                                   "Opens exposure assessments: .kxa\n"
                                   "\n"
                                   "A program that is running already opens the files.\n"
                                   "\n"
                                   "  --new-instance  open them in a program of their own\n"
                                   "  --help          this text\n"
                                   "  --version       the version\n"
                                   "  --              what follows are files, whatever they begin with\n"
                                   "\n"
                                   "kestrane-cli does the same without windows; kestrane-cli --help tells how.\n";
constexpr std::string_view kUsage = kHelp.substr(0, kHelp.find('\n') + 1);
constexpr std::string_view kEndOfOptions = "--"; // what follows are files, whatever they begin with
constexpr int kWrongWords = 2;                   // exit status
constexpr int kLook = 50;                        // milliseconds between two looks at the clock
constexpr double kSplashSeconds = 2.5;

std::string nameOfSettings() {
    const std::string name = LoadSoftwareByFirm(kCompany).SettingsAppName;
    return name.empty() ? std::string(kApplicationTitle) : name;
}

// The answer to a call that only asks about the program; empty for any other call.
std::string_view answerWithoutDisplay(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == kEndOfOptions) break;
        if (word == "--version") return "kestrane " KESTRANE_VERSION_TEXT "\n";
        if (word == "--help") return kHelp;
    }
    return {};
}

// An exception that leaves an event handler would unwind the toolkit, which is not made for it.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (...) {
            endByException();
        }
    }
};

struct Call {
    bool IsNewInstance = false;
    std::string Unknown;            // the first word that begins as an option does and is none
    std::vector<std::string> Names; // of files, from the folder where the program was started
};

// Takes the words that the toolkit has left; its own ones begin with "-", too.
Call callOf(const QStringList& arguments) {
    Call call;
    bool areOptionsOver = false;
    for (const QString& argument : arguments.sliced(1)) {
        if (areOptionsOver || !argument.startsWith('-')) {
            call.Names.push_back(argument.toStdString());
        } else if (argument == QLatin1StringView(kEndOfOptions)) {
            areOptionsOver = true;
        } else if (argument == "--new-instance") {
            call.IsNewInstance = true;
        } else if (call.Unknown.empty()) {
            call.Unknown = argument.toStdString();
        }
    }
    return call;
}

int refuse(const std::string& word) {
    std::cerr << "kestrane: no option '" << word << "'\n" << kUsage << "kestrane --help tells more.\n";
    return kWrongWords;
}

Text::Id captionOf(Button button) {
    switch (button) {
    case Button::Ok:
        return Text::Ok;
    case Button::Cancel:
        return Text::Cancel;
    case Button::Retry:
        return Text::Retry;
    case Button::Yes:
        return Text::YesButton;
    case Button::No:
        return Text::NoButton;
    }
    return Text::Ok;
}

// Counts whole seconds, as the clock shows them.
void waitForSplash(Session& session, CalendarTime start) {
    constexpr double kSecondsOfDay = 86400;
    while (std::round((session.clock.now() - start) * kSecondsOfDay) < kSplashSeconds)
        session.pump.wait(std::chrono::milliseconds(kLook));
}

// The dialogs of Qt speak the language of the program as far as its translations are installed.
void translateToolkit(QApplication& application, const Language& language) {
    const QString name =
        "qtbase_" + QString::fromUtf8(language.Code.data(), static_cast<qsizetype>(language.Code.size()));
    auto* const translator = new QTranslator(&application);
    if (translator->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

void nameApplication() {
    QApplication::setApplicationName("kestrane");
    QApplication::setApplicationDisplayName({});
    QApplication::setDesktopFileName(KESTRANE_ID);
    QApplication::setWindowIcon(iconOf("application"));
}

int run(int argc, char** argv) {
    SystemClock clock;
    const CalendarTime start = clock.now();
    installCrashReport(stateFolder() + "kestrane/", KESTRANE_VERSION_TEXT);
    Application application(argc, argv);
    const Call call = callOf(QApplication::arguments());
    if (!call.Unknown.empty()) return refuse(call.Unknown);
    nameApplication();
    const DialogFit fit;
    OneProcess program(stateFolder() + "kestrane/");
    if (!call.IsNewInstance && program.HandOver(namedFiles(call.Names))) return EXIT_SUCCESS;
    QtEventPump pump;
    const std::unique_ptr<IniFile> settings = IniFile::ofUser(configFolder() + nameOfSettings() + ".ini");
    const std::unique_ptr<IniFile> state = IniFile::ofUser(stateFolder() + "kestrane/" + nameOfSettings() + ".ini");
    Session* texts = nullptr;
    DesktopMessages messages([&texts](Button button) { return texts->LoadText(captionOf(button)); });
    BackgroundServer server(pump);
    showAppearance(readAppearance(*settings));
    const Language& language = programLanguage(*settings);
    translateToolkit(application, language);
    Session session(kCompany, systemLocale(), *settings, messages, pump, clock, {language, language});
    texts = &session;
    session.server = &server;
    session.state = state.get();
    session.StateFolder = stateFolder() + "kestrane/";
    moveState(session);
    const auto tell = [&session](const std::string& path) {
        session.ShowMessage(ReplaceText(session.LoadText(Text::SettingsNotWritten), "^", path), kIconExclamation);
    };
    settings->TellOnce(tell);
    state->TellOnce(tell);
    session.DocumentsFolder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    QtComm comm(*settings, [&session](Text::Id id) { return session.LoadText(id); });
    session.comm = &comm;
    QtHttp http;
    session.http = &http;
    ProtectorCollection protectors = protectorsOfUser();
    session.protectors = &protectors;

    frmSplash splash(session);
    splash.show();
    mdiMain frame(session);
    // Unlike quit(), no window can refuse this.
    QObject::connect(&frame, &mdiMain::Closed, [] { QCoreApplication::exit(); });
    const std::vector<std::string> opened = Main(session, call.Names);
    waitForSplash(session, start);
    frame.show();
    frame.NewExplorerWindow();
    ShowOpened(session, opened);
    frame.OpenAssessments(opened, OpenSource::Named);
    splash.close();
    frame.showMaximized();
    program.Listen([&frame](const std::vector<std::string>& paths) { frame.OpenForAnother(paths); });
    frame.TellOfCrash();
    frame.OfferRecovery();
    const int status = QApplication::exec();
    session.OpenFiles.clear();
    return status;
}

} // namespace

} // namespace kestrane

int main(int argc, char** argv) {
    if (const std::string_view answer = kestrane::answerWithoutDisplay(argc, argv); !answer.empty()) {
        std::cout << answer << std::flush;
        return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (!kestrane::hasDisplay()) {
        const kestrane::Language& language = kestrane::LanguageOf(kestrane::systemLanguage());
        std::cerr << kestrane::Texts(kestrane::LoadSoftwareByFirm(KESTRANE_COMPANY), 0, 0, 0, {language, language})
                         .LoadText(kestrane::Text::NeedsADisplay)
                  << '\n';
        return EXIT_FAILURE;
    }
    try {
        return kestrane::run(argc, argv);
    } catch (const kestrane::RuntimeError& error) {
        std::cerr << kestrane::kApplicationTitle << ": " << error.Number << ": " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}

// The program `kvdesign-desktop`.

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QTimer>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <optional>

#include "frame/CoreUtil.h"
#include "host/CommandsSession.h"
#include "host/Places.h"
#include "host/Text.h"
#include "host/desktop/BrowserWindow.h"
#include "host/desktop/Desk.h"
#include "host/desktop/QtText.h"
#include "host/desktop/Translations.h"

namespace {

namespace fs = std::filesystem;

/// Qt's event loop must see no exception: what gets here is told, and the program goes on.
class Application final : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* Receiver, QEvent* Event) override {
        try {
            return QApplication::notify(Receiver, Event);
        } catch (const kv::Failure& Raised) {
            Tell(kv::host::ErrorText(Raised.Error()));
        } catch (const std::exception& Trouble) {
            Tell(kv::host::FromUtf8Lossy(Trouble.what()));
        } catch (...) {
            Tell(kv::desktop::ToWide(translate("Application", "Errore sconosciuto")));
        }
        return false;
    }

  private:
    static void Tell(const std::wstring& Sentence) noexcept {
        try {
            static_cast<void>(kv::CoreUtil::Instance().Door().MessageBox(Sentence, kv::box::kCritical));
        } catch (...) {  // no memory for a box; the program goes on all the same
            std::cerr << "kvdesign-desktop: out of memory\n";
        }
    }
};

fs::path ChosenStore(const kv::host::Places& Given) {
    if (!Given.Store.empty()) return Given.Store;
    if (const std::optional<fs::path> Named = kv::host::StoreOfEnvironment()) return *Named;
    if (const std::optional<fs::path> Last = kv::desktop::BrowserWindow::LastStore()) return *Last;
    return kv::host::DefaultStore();
}

int Run(int& Count, char** Arguments, const kv::host::Places& Given) {
    QCoreApplication::setOrganizationName(QStringLiteral("kvdesign"));
    QCoreApplication::setApplicationName(QStringLiteral("kvdesign"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KVDESIGN_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("KvDesign"));
    QGuiApplication::setDesktopFileName(QStringLiteral("kvdesign"));
    Application Program(Count, Arguments);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/desktop/kvdesign.png")));
    const kv::desktop::Translations Words{QLocale()};

    kv::desktop::Desk Desk(Given.ProgramDir,
                           Given.Temp.empty() ? kv::host::TemporaryFolder() : fs::path(Given.Temp));
    kv::desktop::BrowserWindow Browser(Desk);
    Browser.show();
    // Behind the window, so that what it tells stands before it.
    QTimer::singleShot(0, &Browser, [&] { Browser.OpenStore(ChosenStore(Given)); });
    return QApplication::exec();
}

}  // namespace

int main(int Count, char** Arguments) {
    std::signal(SIGPIPE, SIG_IGN);
    CLI::App Line("The desktop window of kvdesign.", "kvdesign-desktop");
    kv::host::Places Given;
    kv::host::AddPlaces(Line, Given);
    Line.set_help_flag("-h,--help", "Print this help and exit");
    Line.set_version_flag("--version", "kvdesign-desktop " KVDESIGN_VERSION, "Print the version and exit");
    try {
        Line.parse(Count, Arguments);
    } catch (const CLI::ParseError& Stop) {
        if (Stop.get_exit_code() == 0) return Line.exit(Stop);
        kv::host::TellTrouble(Stop.what(), std::cerr);
        return kv::host::exit_code::kUsage;
    }
    return kv::host::Guarded(std::cerr, [&] { return Run(Count, Arguments, Given); });
}

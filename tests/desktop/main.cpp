// The tests of the desktop window need an application, and no screen unless one is asked for.

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

namespace {

/// Each test finds settings that hold nothing, in a folder of their own: the operator's are left alone.
class OwnSettings final : public testing::EmptyTestEventListener {
  public:
    OwnSettings() {
        QCoreApplication::setOrganizationName(QStringLiteral("kvdesign"));
        QCoreApplication::setApplicationName(QStringLiteral("kvdesign"));
        for (const QSettings::Format Each : {QSettings::NativeFormat, QSettings::IniFormat})
            QSettings::setPath(Each, QSettings::UserScope, Folder_.path());
    }

  private:
    void OnTestStart(const testing::TestInfo&) override { QSettings().clear(); }

    QTemporaryDir Folder_;
};

QtMessageHandler g_Others = nullptr;

// Without a screen Qt complains of what it then cannot do, at every window, and without a session once more.
void WithoutComplaints(QtMsgType Kind, const QMessageLogContext& Where, const QString& Text) {
    for (const char* const Each :
         {"This plugin does not support ", "QStandardPaths: XDG_RUNTIME_DIR not set"})
        if (Text.startsWith(QLatin1String(Each))) return;
    g_Others(Kind, Where, Text);
}

}  // namespace

int main(int Count, char** Arguments) {
    testing::InitGoogleTest(&Count, Arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    g_Others = qInstallMessageHandler(WithoutComplaints);
    const QApplication Application(Count, Arguments);
    testing::UnitTest::GetInstance()->listeners().Append(new OwnSettings);
    return RUN_ALL_TESTS();
}

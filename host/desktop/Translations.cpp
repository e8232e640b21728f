#include "host/desktop/Translations.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>

namespace kv::desktop {
namespace {

const QString kEnglish = QStringLiteral(":/i18n/kvdesign_en.qm");

}  // namespace

Translations::Translations(const QLocale& Of) {
    const bool Italian = Of.language() == QLocale::Italian || Of.language() == QLocale::C;
    const bool English = !Italian && Ours_.load(kEnglish);
    if (English) QCoreApplication::installTranslator(&Ours_);
    // Qt's own words in the language that ours are in.
    const QLocale Shown(English ? QLocale::English : QLocale::Italian);
    if (Qts_.load(Shown, QStringLiteral("qtbase"), QStringLiteral("_"),
                  QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&Qts_);
}

Translations::~Translations() {
    QCoreApplication::removeTranslator(&Qts_);
    QCoreApplication::removeTranslator(&Ours_);
}

bool Translations::EnglishIsThere() { return QFile::exists(kEnglish); }

}  // namespace kv::desktop

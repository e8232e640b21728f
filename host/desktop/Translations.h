// The language of the windows.
#pragma once

#include <QLocale>
#include <QTranslator>

namespace kv::desktop {

/// While it lives the windows speak the language of the locale. Italian is what stands in the program;
/// whoever reads another language is served in English, where that was built in. What the server says stays
/// Italian.
class Translations {
  public:
    /// Needs an application. Windows that are there already keep their words.
    explicit Translations(const QLocale& Of);
    Translations(const Translations&) = delete;
    Translations& operator=(const Translations&) = delete;
    ~Translations();

    /// Whether English was built in.
    static bool EnglishIsThere();

  private:
    QTranslator Qts_;
    QTranslator Ours_;
};

}  // namespace kv::desktop

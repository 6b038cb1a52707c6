#pragma once

#include <QString>
#include <QStringList>
#include <QTranslator>

namespace tallyfold {

/// The translations of a language, installed in the application during the lifetime of this object. For the
/// language of the keys these are plural forms, and terms that differ on this desktop.
class Translations {
public:
    /// The languages that have catalogues, as BCP 47 tags. The first is that of the keys.
    [[nodiscard]] static QStringList languages();

    /// `language` is one of `languages`.
    explicit Translations(const QString &language = languages().front());
    ~Translations();
    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

private:
    /// False if there is no catalogue `name`.
    static bool install(QTranslator &translator, const QString &name);

    QTranslator m_texts;
    QTranslator m_desktop;
};

} // namespace tallyfold

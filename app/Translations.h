#pragma once

#include <QString>
#include <QStringList>
#include <QTranslator>

namespace tallyfold {

/// The texts of a language that are not their own key; in that of the keys the words for one of something,
/// and what this desktop calls things of another one. Installed as long as this lives, for the application
/// that exists then.
class Translations {
public:
    /// The languages that there are catalogues of, as BCP 47 calls them. The first is that of the keys.
    [[nodiscard]] static QStringList languages();

    /// `language` is one of them.
    explicit Translations(const QString &language = languages().front());
    ~Translations();
    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

private:
    /// False when there is no catalogue `name`.
    static bool install(QTranslator &translator, const QString &name);

    QTranslator m_texts;
    QTranslator m_desktop;
};

} // namespace tallyfold

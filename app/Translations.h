#pragma once

#include <QTranslator>

namespace tallyfold {

/// The texts that are not their own key: the words for one of something, and what this desktop calls things
/// of another one. Installed as long as this lives, for the application that exists then.
class Translations {
public:
    Translations();
    ~Translations();
    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

private:
    void install(QTranslator &translator, const QString &name);

    QTranslator m_plurals;
    QTranslator m_desktop;
};

} // namespace tallyfold

#pragma once

#include <QTranslator>

namespace tallyfold {

/// The texts that are not their own key: the words for one of something. Installed as long as this lives, for
/// the application that exists then.
class Translations {
public:
    Translations();
    ~Translations();
    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

private:
    QTranslator m_english;
};

} // namespace tallyfold

#include "app/Translations.h"

#include <QCoreApplication>

/// A static library's resources are not there by themselves. The macro asks for the global namespace.
static void initResources()
{
    Q_INIT_RESOURCE(tallyfold_translations);
}

namespace tallyfold {

QStringList Translations::languages()
{
    return QStringLiteral(TALLYFOLD_LANGUAGES).split(u' ');
}

Translations::Translations(const QString &language)
{
    initResources();
    install(m_texts, QStringLiteral("tallyfold_") + language);
    install(m_desktop, QStringLiteral("tallyfold_%1_desktop").arg(language));
}

Translations::~Translations()
{
    QCoreApplication::removeTranslator(&m_desktop);
    QCoreApplication::removeTranslator(&m_texts);
}

void Translations::install(QTranslator &translator, const QString &name)
{
    if (translator.load(QStringLiteral(":/translations/") + name + QStringLiteral(".qm"))) {
        QCoreApplication::installTranslator(&translator);
    }
}

} // namespace tallyfold

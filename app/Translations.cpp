#include "app/Translations.h"

#include "app/Log.h"

#include <QCoreApplication>

/// Resources of a static library must be initialized. The macro requires the global namespace.
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
    if (!install(m_texts, QStringLiteral("tallyfold_") + language)) {
        qCInfo(appLog) << "there is no catalogue of the language" << language;
    }
    install(m_desktop, QStringLiteral("tallyfold_%1_desktop").arg(language));
}

Translations::~Translations()
{
    QCoreApplication::removeTranslator(&m_desktop);
    QCoreApplication::removeTranslator(&m_texts);
}

bool Translations::install(QTranslator &translator, const QString &name)
{
    return translator.load(QStringLiteral(":/translations/") + name + QStringLiteral(".qm")) &&
           QCoreApplication::installTranslator(&translator);
}

} // namespace tallyfold

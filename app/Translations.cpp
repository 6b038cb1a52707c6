#include "app/Translations.h"

#include <QCoreApplication>
#include <QtGlobal>

/// A static library's resources are not there by themselves. The macro asks for the global namespace.
static void initResources()
{
    Q_INIT_RESOURCE(tallyfold_translations);
}

namespace tallyfold {

Translations::Translations()
{
    initResources();
    install(m_plurals, QStringLiteral("tallyfold_en"));
#ifndef Q_OS_MACOS // The keys call things what they are called there.
    install(m_desktop, QStringLiteral("tallyfold_en_desktop"));
#endif
}

Translations::~Translations()
{
    QCoreApplication::removeTranslator(&m_desktop);
    QCoreApplication::removeTranslator(&m_plurals);
}

void Translations::install(QTranslator &translator, const QString &name)
{
    if (translator.load(QStringLiteral(":/translations/") + name + QStringLiteral(".qm"))) {
        QCoreApplication::installTranslator(&translator);
    }
}

} // namespace tallyfold

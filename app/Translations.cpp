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
    if (m_english.load(QStringLiteral(":/translations/tallyfold_en.qm"))) {
        QCoreApplication::installTranslator(&m_english);
    }
}

Translations::~Translations()
{
    QCoreApplication::removeTranslator(&m_english);
}

} // namespace tallyfold

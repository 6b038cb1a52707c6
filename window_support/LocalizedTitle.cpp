#include "window_support/LocalizedTitle.h"

#include <QHash>

namespace tallyfold {

namespace {

QString languageAlone(const QString &identifier)
{
    return identifier.section(u'-', 0, 0).section(u'_', 0, 0);
}

/// The module's tables, by language and title. English is the language of the titles themselves.
const QHash<QString, QHash<QString, QString>> &tables()
{
    static const QHash<QString, QHash<QString, QString>> tables{
        {QStringLiteral("de"),
         {{QStringLiteral("Close Window"), QStringLiteral("Fenster schließen")},
          {QStringLiteral("%1 Help"), QStringLiteral("%1-Hilfe")}}},
        {QStringLiteral("es"),
         {{QStringLiteral("Close Window"), QStringLiteral("Cerrar ventana")},
          {QStringLiteral("%1 Help"), QStringLiteral("Ayuda de %1")}}},
        {QStringLiteral("fr"),
         {{QStringLiteral("Close Window"), QStringLiteral("Fermer la fenêtre")},
          {QStringLiteral("%1 Help"), QStringLiteral("Aide %1")}}}};
    return tables;
}

/// What stands for no language in particular.
const QString base = QStringLiteral("Base");

/// The best of `available` for the user.
QString bestOf(const QStringList &available, const QStringList &preferred)
{
    for (const QString &wanted : preferred) {
        if (available.contains(wanted)) {
            return wanted;
        }
        if (available.contains(languageAlone(wanted))) {
            return languageAlone(wanted);
        }
    }
    return available.isEmpty() ? base : available.first();
}

} // namespace

QString applicationLanguage(const QStringList &available, const QStringList &preferred)
{
    const QString best = bestOf(available, preferred);
    return best == base && !preferred.isEmpty() ? languageAlone(preferred.first()) : best;
}

QString localizedTitle(const QString &title, const QString &language)
{
    const auto exact = tables().constFind(language);
    const auto table = exact == tables().constEnd() ? tables().constFind(languageAlone(language)) : exact;
    return table == tables().constEnd() ? title : table->value(title, title);
}

} // namespace tallyfold

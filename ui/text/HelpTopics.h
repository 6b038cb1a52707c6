#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tallyfold {

/// A topic of the help.
struct HelpTopic {
    QString id; ///< Stable, in no language.
    QString title;
    QString symbol; ///< Name of the symbol beside the title.
    QStringList paragraphs;
};

/// All topics, in their order; built once, when help is first shown.
[[nodiscard]] const QList<HelpTopic> &helpTopics();

/// The product's addresses.
struct ProductLinks {
    QString webPage;
    QString supportAddress; ///< An e-mail address.

    /// A link that begins a message to the support address, its subject naming the program.
    [[nodiscard]] QString supportMail() const;

    [[nodiscard]] static ProductLinks ours();
};

} // namespace tallyfold

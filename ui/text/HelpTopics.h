#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tallyfold {

/// A topic of the help.
struct HelpTopic {
    QString id; ///< Stable and not translated.
    QString title;
    QString symbol; ///< Name of the symbol next to the title.
    QStringList paragraphs;
};

/// All topics in order; created when help is first shown.
[[nodiscard]] const QList<HelpTopic> &helpTopics();

/// The addresses of the product.
struct ProductLinks {
    QString webPage;
    QString supportAddress; ///< An e-mail address.

    /// A mailto link to the support address, with the program name in the subject.
    [[nodiscard]] QString supportMail() const;

    [[nodiscard]] static ProductLinks ours();
};

} // namespace tallyfold

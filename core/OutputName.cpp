#include "core/OutputName.h"

#include "core/Graphemes.h"
#include "core/PdfEnding.h"

namespace tallyfold {

namespace {

QString ending()
{
    return QString::fromLatin1(pdfEnding.data(), static_cast<qsizetype>(pdfEnding.size()));
}

} // namespace

QString cleanedFileName(const QString &name)
{
    QString clean = name;
    for (QChar &ch : clean) {
        if (ch == u'/' || ch == u':') {
            ch = u'-';
        } else if (isNewline(ch) || ch.category() == QChar::Other_Control) {
            ch = u' ';
        }
    }
    clean = clean.trimmed();
    while (clean.startsWith(u'.')) {
        clean.remove(0, 1);
    }
    if (clean.isEmpty()) {
        clean = QStringLiteral("Document");
    }
    return hasPdfEnding(clean) ? clean : clean + ending();
}

QString outputName(const QString &sourceName, const std::optional<NumberRange> &range, OutputNaming naming,
                   const BatesFormatter &bates)
{
    QString base = cleanedFileName(sourceName);
    if (!range) {
        return base;
    }
    switch (naming) {
    case OutputNaming::original:
        break;
    case OutputNaming::batesFirst:
        return cleanedFileName(bates(range->first) + ending());
    case OutputNaming::batesRange: {
        QString name = bates(range->first);
        if (range->last != range->first) {
            name += u'-' + bates(range->last);
        }
        return cleanedFileName(name + ending());
    }
    case OutputNaming::batesAndOriginal:
        return cleanedFileName(bates(range->first) + u' ' + base.chopped(ending().size()) + ending());
    }
    return base;
}

} // namespace tallyfold

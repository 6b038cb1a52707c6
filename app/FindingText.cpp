#include "app/FindingText.h"

#include "app/CountText.h"
#include "core/PdfEnding.h"
#include "core/SourceFile.h"

#include <QCoreApplication>
#include <QLocale>

namespace tallyfold {

namespace {

using namespace check;

template <typename... Kinds> bool isAny(const Finding &finding)
{
    return (std::holds_alternative<Kinds>(finding.what) || ...);
}

/// The title of each kind.
class Title {
    Q_DECLARE_TR_FUNCTIONS(FindingText)
public:
    QString operator()(const CopyMissing &) const
    {
        return tr("Missing copies");
    }
    QString operator()(const CopyUnreadable &) const
    {
        return tr("Unreadable copies");
    }
    QString operator()(const PageCountDiffers &) const
    {
        return tr("Other counts of pages");
    }
    QString operator()(const NumberMissing &) const
    {
        return tr("Pages without their number");
    }
    QString operator()(const OtherNumber &) const
    {
        return tr("Pages with another number");
    }
    QString operator()(const PageNotChecked &) const
    {
        return tr("Pages not checked");
    }
    QString operator()(const NumbersTooShort &) const
    {
        return tr("Copies not checked for numbers");
    }
    QString operator()(const NumberGap &) const
    {
        return tr("Gaps in the numbers");
    }
    QString operator()(const NumberTwice &) const
    {
        return tr("Numbers used twice");
    }
    QString operator()(const NotInIndex &) const
    {
        return tr("Files not in the index");
    }
    QString operator()(const Leftover &) const
    {
        return tr("Files left behind");
    }
    QString operator()(const FolderUnreadable &) const
    {
        return tr("Unreadable folders");
    }
    QString operator()(const IndexMissing &) const
    {
        return tr("Missing indexes");
    }
    QString operator()(const IndexUnreadable &) const
    {
        return tr("Unreadable indexes");
    }
    QString operator()(const RowNotUnderstood &) const
    {
        return tr("Rows of the index not understood");
    }
    QString operator()(const CoversWithoutNumber &) const
    {
        return tr("Covers");
    }
    QString operator()(const Changed &) const
    {
        return tr("Changed files");
    }
    QString operator()(const NotInHashList &) const
    {
        return tr("Files not in the hash list");
    }
    QString operator()(const HashListNotUnderstood &) const
    {
        return tr("Lines of the hash list not understood");
    }
};

QString systemWords(const std::error_code &error)
{
    return QString::fromStdString(error.message());
}

/// One sentence on each.
class Sentence {
    Q_DECLARE_TR_FUNCTIONS(FindingText)
public:
    Sentence(const Finding &finding, std::span<const std::filesystem::path> folders)
        : m_finding(&finding), m_folders(folders)
    {
    }

    QString operator()(const CopyMissing &) const
    {
        return tr("The index names it, and it isn’t in the folder.");
    }
    QString operator()(const CopyUnreadable &) const
    {
        return tr("It can’t be read as a PDF.");
    }
    QString operator()(const PageCountDiffers &what) const
    {
        return tr("It has %1; the index says %2.")
            .arg(countText(what.inCopy, Counted::pages), countText(what.inIndex, Counted::pages));
    }
    QString operator()(const NumberMissing &what) const
    {
        return tr("%1 isn’t on the page.").arg(what.number);
    }
    QString operator()(const OtherNumber &what) const
    {
        return tr("The page shows %1 in the place of %2.").arg(what.found, what.number);
    }
    QString operator()(const PageNotChecked &) const
    {
        return tr("The page couldn’t be read, or not in time.");
    }
    QString operator()(const NumbersTooShort &) const
    {
        return tr("Its numbers are so short that any page has them; they weren’t looked for.");
    }
    QString operator()(const NumberGap &what) const
    {
        return (what.first == what.last ? tr("Before this copy, %1 is missing.")
                                        : tr("Before this copy, %1 are missing."))
            .arg(numberRange(what.first, what.last));
    }
    QString operator()(const NumberTwice &what) const
    {
        const QString numbers = numberRange(what.first, what.last);
        if (what.otherFolder == m_finding->folder || what.otherFolder >= m_folders.size()) {
            return tr("“%2” has %1 as well.").arg(numbers, what.otherCopy);
        }
        return tr("“%2” in “%3” has %1 as well.")
            .arg(numbers, what.otherCopy, folderName(m_folders[what.otherFolder]));
    }
    QString operator()(const NotInIndex &) const
    {
        return tr("The index doesn’t name this file.");
    }
    QString operator()(const Leftover &) const
    {
        return tr("A production that was cut short left this file behind.");
    }
    QString operator()(const FolderUnreadable &what) const
    {
        return tr("The folder can’t be read: %1.").arg(systemWords(what.error));
    }
    QString operator()(const IndexMissing &) const
    {
        return tr("There is no index in the folder, so nothing says what belongs in it.");
    }
    QString operator()(const IndexUnreadable &what) const
    {
        return tr("The index can’t be read: %1.").arg(systemWords(what.error));
    }
    QString operator()(const RowNotUnderstood &what) const
    {
        if (what.row == 1) {
            return tr("It doesn’t begin as a production index does; none of its "
                      "rows was looked at.");
        }
        return tr("Row %1 isn’t understood; what it names wasn’t looked at.")
            .arg(QLocale().toString(static_cast<qlonglong>(what.row)));
    }
    QString operator()(const CoversWithoutNumber &what) const
    {
        return tr("Page 1 shows no number in any copy (%1): taken for covers.")
            .arg(countText(what.copies, Counted::copies));
    }
    QString operator()(const Changed &) const
    {
        return tr("It isn’t the file that the hash list tells of.");
    }
    QString operator()(const NotInHashList &) const
    {
        return tr("The hash list doesn’t name it.");
    }
    QString operator()(const HashListNotUnderstood &what) const
    {
        return what.line == 0 ? tr("The hash list can’t be read.")
                              : tr("Line %1 of the hash list isn’t understood.")
                                    .arg(QLocale().toString(static_cast<qlonglong>(what.line)));
    }

private:
    const Finding *m_finding;
    std::span<const std::filesystem::path> m_folders;
};

} // namespace

QString numberRange(const QString &first, const QString &last)
{
    return first == last ? first : first + QStringLiteral(" – ") + last;
}

QString findingText(const Finding &finding, std::span<const std::filesystem::path> folders)
{
    return std::visit(Sentence(finding, folders), finding.what);
}

FindingKind kindOf(const Finding &finding)
{
    return finding.what.index();
}

QString kindTitle(const Finding &finding)
{
    return std::visit(Title(), finding.what);
}

bool isOfCopy(const Finding &finding)
{
    return isAny<CopyMissing, CopyUnreadable, PageCountDiffers, NumberMissing, OtherNumber, PageNotChecked,
                 NumbersTooShort, NumberGap, NumberTwice>(finding);
}

bool hasPage(const Finding &finding)
{
    return !isAny<CopyMissing, CopyUnreadable, Leftover>(finding) && hasPdfEnding(QStringView(finding.file));
}

QString folderName(const std::filesystem::path &folder)
{
    return folder.has_filename() ? displayName(folder) : displayPath(folder);
}

} // namespace tallyfold

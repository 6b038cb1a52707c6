#include "ui/text/Messages.h"

#include "app/RunMessages.h"
#include "ui/text/Words.h"

namespace tallyfold {

QString messageOf(const ProductionConflict &conflict)
{
    switch (conflict.kind) {
    case ProductionConflict::Kind::exists:
        return words(QT_TRANSLATE_NOOP(
                         "Words", "“%1” is already in the output folder. %2 never replaces files: choose an "
                                  "empty folder."))
            .arg(conflict.name, displayedName());
    case ProductionConflict::Kind::duplicate:
        return words(QT_TRANSLATE_NOOP(
                         "Words",
                         "Two copies would be named “%1”. Choose a Bates naming style, or rename one "
                         "original."))
            .arg(conflict.name);
    case ProductionConflict::Kind::wouldReplaceOriginal:
        return words(QT_TRANSLATE_NOOP("Words",
                                       "“%1” would replace an original. Choose a different output folder."))
            .arg(conflict.name);
    case ProductionConflict::Kind::nothingToStamp:
        return words(QT_TRANSLATE_NOOP("Words", "Add PDFs to number."));
    case ProductionConflict::Kind::folderMissing:
        break;
    }
    return words(QT_TRANSLATE_NOOP("Words", "The output folder isn’t there any more. Choose it again."));
}

std::optional<QString> firstMessageOf(const std::vector<ProductionConflict> &conflicts)
{
    return conflicts.empty() ? std::nullopt : std::optional(messageOf(conflicts.front()));
}

std::optional<QString> folderMessageOf(const std::vector<ProductionConflict> &conflicts)
{
    if (conflicts.empty() || conflicts.front().kind == ProductionConflict::Kind::nothingToStamp) {
        return std::nullopt;
    }
    const std::optional<QString> existing = existingFilesMessage(conflicts);
    return existing ? existing : firstMessageOf(conflicts);
}

QString messageOf(const PasswordNotice &notice)
{
    constexpr std::int64_t mostNames = 4;
    const PasswordNotice::ShortList shortList = notice.shortList(mostNames);
    QString list = shortList.names.join(QStringLiteral(", "));
    if (shortList.more > 0) {
        list += words(QT_TRANSLATE_NOOP("Words", " and %1 more")).arg(shortList.more);
    }
    if (notice.count() == 1) {
        return words(QT_TRANSLATE_NOOP(
                         "Words",
                         "This PDF is password-protected and won’t be stamped: %1. Remove the password (open "
                         "it "
                         "in Preview › File › Export without the Encrypt option, or in Acrobat) and add it "
                         "again."))
            .arg(list);
    }
    return words(QT_TRANSLATE_NOOP(
                     "Words", "%1 PDFs are password-protected and won’t be stamped: %2. Remove the passwords "
                              "(open each in Preview › File › Export without the Encrypt option, or in "
                              "Acrobat) and add them again."))
        .arg(QString::number(notice.count()), list);
}

QString confirmationOf(const PasswordNotice &notice)
{
    return messageOf(notice) + u' ' +
           words(QT_TRANSLATE_NOOP("Words",
                                   "The production index will list them as “skipped: password-protected”."));
}

QString removalTitleOf(const PasswordNotice &notice)
{
    return notice.count() == 1 ? words(QT_TRANSLATE_NOOP("Words", "Remove It from the List"))
                               : words(QT_TRANSLATE_NOOP("Words", "Remove Them from the List"));
}

QString shortDescriptionOf(SourceProblem problem)
{
    switch (problem) {
    case SourceProblem::locked:
    case SourceProblem::encrypted:
        return words(QT_TRANSLATE_NOOP("Words", "Password-protected"));
    case SourceProblem::unreadable:
        return words(QT_TRANSLATE_NOOP("Words", "Can’t be read"));
    case SourceProblem::empty:
        break;
    }
    return words(QT_TRANSLATE_NOOP("Words", "No pages"));
}

QString messageOf(SourceProblem problem)
{
    switch (problem) {
    case SourceProblem::locked:
        return words(QT_TRANSLATE_NOOP(
                         "Words",
                         "This PDF is password-protected: it needs a password to open. Remove the password "
                         "(open it in Preview › File › Export without the Encrypt option, or in Acrobat) and "
                         "add it again; %1 won’t stamp protected files."))
            .arg(displayedName());
    case SourceProblem::encrypted:
        return words(
                   QT_TRANSLATE_NOOP(
                       "Words",
                       "This PDF is password-protected: its owner password restricts printing, editing or "
                       "copying. Remove the password (open it in Preview › File › Export without the Encrypt "
                       "option, or in Acrobat) and add it again; %1 won’t stamp protected files."))
            .arg(displayedName());
    case SourceProblem::unreadable:
        return words(QT_TRANSLATE_NOOP(
            "Words",
            "This file isn’t a PDF that macOS can open. It will be skipped and listed in the index."));
    case SourceProblem::empty:
        break;
    }
    return words(QT_TRANSLATE_NOOP("Words", "This PDF has no pages. It will be skipped."));
}

} // namespace tallyfold

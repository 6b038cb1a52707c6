#include "ui/text/HelpTopics.h"

#include "app/RunMessages.h"
#include "ui/text/Words.h"

#include <QUrl>

#include <initializer_list>

namespace tallyfold {

namespace {

/// A topic from the keys of its texts, with the program name and the support address inserted.
HelpTopic topic(const char *id, const char *title, const char *symbol,
                std::initializer_list<const char *> paragraphs)
{
    HelpTopic made{QString::fromLatin1(id), words(title), QString::fromLatin1(symbol), {}};
    for (const char *paragraph : paragraphs) {
        made.paragraphs.append(words(paragraph)
                                   .replace(QStringLiteral("%1"), displayedName())
                                   .replace(QStringLiteral("%2"), ProductLinks::ours().supportAddress));
    }
    return made;
}

} // namespace

const QList<HelpTopic> &helpTopics()
{
    static const QList<HelpTopic> topics{
        topic("start", QT_TRANSLATE_NOOP("Words", "Getting started"), "play.circle",
              {QT_TRANSLATE_NOOP("Words", "Drop a folder of PDFs (or the PDFs themselves) on the list, or "
                                          "choose File › Add PDFs (⌘O). PDFs in subfolders are added too."),
               QT_TRANSLATE_NOOP("Words", "Set the prefix and start number, choose where the stamp goes, and "
                                          "check the preview on the right."),
               QT_TRANSLATE_NOOP(
                   "Words", "Choose an empty output folder and click Stamp (⌘Return). The stamped copies and "
                            "a production index are written there; the originals are only read.")}),
        topic("numbers", QT_TRANSLATE_NOOP("Words", "Numbering and order"), "number",
              {QT_TRANSLATE_NOOP("Words",
                                 "A Bates number is the prefix, the number padded with zeros to the digits "
                                 "you choose, and the suffix: ABC + 1 with 6 digits is ABC000001. Numbers "
                                 "longer than the digits are written in full; the form warns you, because "
                                 "copies named by Bates number then stop sorting in order."),
               QT_TRANSLATE_NOOP(
                   "Words",
                   "Numbers continue from file to file. File order can be by name (the way Finder sorts, so "
                   "2 comes before 10), oldest first, or as listed: drag files in the list to set it."),
               QT_TRANSLATE_NOOP(
                   "Words", "After a production, Start Next Production clears the list and sets the start "
                            "number to the next one, so a later production continues the series.")}),
        topic(
            "look", QT_TRANSLATE_NOOP("Words", "Placement, legend and page numbers"), "textformat",
            {QT_TRANSLATE_NOOP("Words", "Pick one of six spots for the Bates number, a legend (such as "
                                        "CONFIDENTIAL) and Page X of Y. Lines in the same spot stack. The "
                                        "margin is measured from the page edge, 72 points to the inch."),
             QT_TRANSLATE_NOOP(
                 "Words",
                 "Pages turned sideways in the original come out upright with the stamp where you’d expect "
                 "it, and every page keeps its own size, so letter, legal and A4 can be mixed."),
             QT_TRANSLATE_NOOP(
                 "Words",
                 "The stamp is real text: it can be searched and selected in any PDF reader, and so can the "
                 "original text. The white box behind it keeps it readable over page content. If a file "
                 "already carries an earlier Bates number near the edge, the list and the form point it out: "
                 "turn the box off (the stamp is then drawn over the page, transparent) or move the stamp."),
             QT_TRANSLATE_NOOP("Words", "The copies are flat: links, comments and form fields in the "
                                        "originals aren’t kept as live, editable items.")}),
        topic("cover", QT_TRANSLATE_NOOP("Words", "Cover pages"), "doc.plaintext",
              {QT_TRANSLATE_NOOP(
                   "Words",
                   "First page of each file: stamp every page, leave the first page blank but count it (the "
                   "numbers skip it), or leave it blank and don’t count it (the numbers start on page 2)."),
               QT_TRANSLATE_NOOP(
                   "Words", "A one-page file has only a cover: when covers aren’t counted it gets no number "
                            "and is left out (listed as skipped in the index); when they’re counted it keeps "
                            "its number but shows no stamp. The form warns about both.")}),
        topic("output", QT_TRANSLATE_NOOP("Words", "Output, index and privilege log"), "tablecells",
              {QT_TRANSLATE_NOOP(
                   "Words", "Copies keep their original names or are named by their first Bates number, "
                            "their Bates range, or both. If a name is already in the output folder, nothing "
                            "is written until you choose another folder: files are never replaced."),
               QT_TRANSLATE_NOOP(
                   "Words",
                   "The production index (Production Index.csv) lists every file in order with its stamped "
                   "copy, first and last Bates number, page count, and whether it was stamped or skipped."),
               QT_TRANSLATE_NOOP("Words", "A privilege log template (Privilege Log.csv) can be written as "
                                          "well, with each copy’s Bates range filled in and columns for "
                                          "date, type, author, recipients, privilege and description.")}),
        topic("password", QT_TRANSLATE_NOOP("Words", "Password-protected PDFs"), "lock",
              {QT_TRANSLATE_NOOP(
                   "Words", "%1 won’t stamp a password-protected PDF: one that needs a password to open, or "
                            "one whose owner password restricts printing, editing or copying. It isn’t "
                            "skipped silently: the list marks it, the form names it, Stamp asks before going "
                            "on without it, and the index lists it as “skipped: password-protected”."),
               QT_TRANSLATE_NOOP("Words",
                                 "To remove the password in Preview: open the PDF and type the password if "
                                 "asked. Choose File › Export, leave Encrypt off (on newer macOS, click "
                                 "Permissions and turn off the password and every restriction; Preview asks "
                                 "for the owner password), and save the copy under a new name."),
               QT_TRANSLATE_NOOP("Words", "In Adobe Acrobat: open the PDF, choose File › Properties › "
                                          "Security (or All tools › Protect a PDF › Remove security), set "
                                          "Security Method to No Security, enter the password and save."),
               QT_TRANSLATE_NOOP("Words",
                                 "Then remove the protected file from the list (select it and press Delete) "
                                 "and add the new copy. If you don’t have the password, ask the sender for "
                                 "an unprotected copy. %1 never removes passwords itself."),
               QT_TRANSLATE_NOOP("Words",
                                 "A PDF with only an owner password that allows printing, editing and "
                                 "copying is stamped as usual. PDFs that can’t be read or have no pages are "
                                 "marked in the list too and listed as skipped in the index.")}),
        topic(
            "privacy", QT_TRANSLATE_NOOP("Words", "Your data and privacy"), "lock.shield",
            {QT_TRANSLATE_NOOP(
                 "Words", "Your PDFs are read and stamped on this Mac and never uploaded. Your settings and "
                          "presets are kept in the app’s preferences. There’s no account and no tracking."),
             QT_TRANSLATE_NOOP("Words", "%1 is a numbering tool, not legal advice: check the rules and "
                                        "agreements that apply to your production."),
             QT_TRANSLATE_NOOP(
                 "Words",
                 "Questions, ideas and problem reports are welcome at %2. A person reads every message.")}),
        topic("support", QT_TRANSLATE_NOOP("Words", "Support"), "envelope", {})};
    return topics;
}

QString ProductLinks::supportMail() const
{
    const QString subject = displayedName() + QStringLiteral(" support");
    return QStringLiteral("mailto:") + supportAddress + QStringLiteral("?subject=") +
           QString::fromLatin1(QUrl::toPercentEncoding(subject));
}

ProductLinks ProductLinks::ours()
{
    return {QStringLiteral("https://tallyfold.example/"), QStringLiteral("support@tallyfold.example")};
}

} // namespace tallyfold

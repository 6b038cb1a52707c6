#include "core/check/PageNumberText.h"

#include "core/StampSettings.h"
#include "core/check/DigitRuns.h"

#include <algorithm>
#include <vector>

namespace tallyfold::check {

namespace {

/// Fewer characters are on many pages for other reasons.
constexpr qsizetype leastLength = 4;
/// Without a prefix or suffix a number of fewer digits could be any.
constexpr qsizetype leastBareDigits = 6;
/// Of a line, to its font size, with the ascent and descent of most fonts.
constexpr double lineHeight = 1.3;

/// A text without white space and in the composed form of its characters, and where white space was.
struct DenseText {
    explicit DenseText(const QString &text)
    {
        bool isAfterSpace = true;
        for (const QChar ch : text.normalized(QString::NormalizationForm_KC)) {
            if (ch.isSpace()) {
                isAfterSpace = true;
                continue;
            }
            characters.append(ch);
            beginsWord.push_back(isAfterSpace);
            isAfterSpace = false;
        }
        beginsWord.push_back(true); // Its end.
    }

    /// Whether digits go on across `place` without a space.
    [[nodiscard]] bool splitsDigits(qsizetype place) const
    {
        return place > 0 && place < characters.size() && !beginsWord[static_cast<std::size_t>(place)] &&
               isDigit(characters[place - 1]) && isDigit(characters[place]);
    }

    [[nodiscard]] bool has(const QString &part) const
    {
        for (qsizetype at = characters.indexOf(part); at >= 0; at = characters.indexOf(part, at + 1)) {
            if (!splitsDigits(at) && !splitsDigits(at + part.size())) {
                return true;
            }
        }
        return false;
    }

    QString characters;
    std::vector<bool> beginsWord;
};

/// The first text in `text` that may be a number like those of `numbers`.
QString otherNumber(const DenseText &text, const NumberedPages &numbers)
{
    const QString prefix = withoutSpace(numbers.prefix);
    const QString suffix = withoutSpace(numbers.suffix);
    const bool isBare = prefix.isEmpty() && suffix.isEmpty();
    for (const DigitRun &run : digitRuns(text.characters)) {
        const qsizetype start = run.start - prefix.size();
        // A run may go on into the suffix, and prefixes may end with digits: only whole runs are compared.
        if (start < 0 || run.end - run.start < std::max(numbers.digits, isBare ? leastBareDigits : 1) ||
            QStringView(text.characters).sliced(start, prefix.size()) != prefix ||
            !QStringView(text.characters).sliced(run.end).startsWith(suffix)) {
            continue;
        }
        return text.characters.mid(start, run.end - start + suffix.size());
    }
    return {};
}

} // namespace

QString withoutSpace(const QString &text)
{
    return DenseText(text).characters;
}

std::array<pdf::Rect, 2> stampStrips(const pdf::Rect &cropBox)
{
    constexpr double deepest =
        StampSettings::marginRange.highest + lineHeight * StampSettings::fontSizeRange.highest;
    const double depth = std::min(deepest, (cropBox.maxY - cropBox.minY) / 2);
    return {pdf::Rect{cropBox.minX, cropBox.minY, cropBox.maxX, cropBox.minY + depth},
            pdf::Rect{cropBox.minX, cropBox.maxY - depth, cropBox.maxX, cropBox.maxY}};
}

bool isTooShort(const QString &number)
{
    return withoutSpace(number).size() < leastLength;
}

NumberOnPage numberIn(std::span<const QString> texts, const NumberedPages &numbers, std::int64_t index)
{
    const QString wanted = withoutSpace(numbers.text(index));
    QString other;
    for (const QString &text : texts) {
        const DenseText there(text);
        if (there.has(wanted)) {
            return {NumberOnPage::Kind::expected, {}};
        }
        if (other.isEmpty()) {
            other = otherNumber(there, numbers);
        }
    }
    return other.isEmpty() ? NumberOnPage() : NumberOnPage{NumberOnPage::Kind::other, other};
}

} // namespace tallyfold::check

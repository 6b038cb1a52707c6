#include "ui/updates/AppVersion.h"

#include <algorithm>
#include <tuple>

namespace tallyfold {

namespace {

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool isLetter(char character)
{
    return character >= 'a' && character <= 'z';
}

} // namespace

AppVersion::Number AppVersion::number(const std::string &digits)
{
    std::string kept = digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
    return {kept.size(), std::move(kept)};
}

std::optional<std::vector<AppVersion::Number>> AppVersion::numbers(const std::string &text)
{
    std::vector<Number> found;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find('.', start), text.size());
        const std::string digits = text.substr(start, end - start);
        if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit)) {
            return std::nullopt;
        }
        found.push_back(number(digits));
        start = end + 1;
    }
    while (!found.empty() && found.back().first == 0) {
        found.pop_back();
    }
    return found;
}

std::optional<std::vector<AppVersion::Piece>> AppVersion::pieces(const std::string &text)
{
    std::vector<Piece> found;
    auto position = text.begin();
    while (position != text.end()) {
        if (isDigit(*position)) {
            const auto end = std::find_if_not(position, text.end(), isDigit);
            found.emplace_back(number(std::string(position, end)));
            position = end;
        } else if (isLetter(*position)) {
            const auto end = std::find_if_not(position, text.end(), isLetter);
            found.emplace_back(std::string(position, end));
            position = end;
        } else if (*position == '.' || *position == '-') {
            ++position;
        } else {
            return std::nullopt;
        }
    }
    return found.empty() ? std::nullopt : std::optional(found);
}

std::optional<AppVersion> AppVersion::parse(QStringView text)
{
    QStringView written = text.trimmed();
    if (written.startsWith(u'v', Qt::CaseInsensitive)) {
        written = written.sliced(1);
    }
    const bool isPlain = std::all_of(written.begin(), written.end(),
                                     [](QChar character) { return character.unicode() < 0x80; });
    if (!isPlain) {
        return std::nullopt;
    }
    const std::string plain = written.toString().toLower().toStdString();
    const std::size_t hyphen = plain.find('-');
    const auto foundNumbers = numbers(plain.substr(0, hyphen));
    if (!foundNumbers) {
        return std::nullopt;
    }
    AppVersion version;
    version.m_text = written.toString();
    version.m_numbers = *foundNumbers;
    if (hyphen != std::string::npos) {
        const auto foundPieces = pieces(plain.substr(hyphen + 1));
        if (!foundPieces) {
            return std::nullopt;
        }
        version.m_isRelease = false;
        version.m_pieces = *foundPieces;
    }
    return version;
}

const QString &AppVersion::text() const
{
    return m_text;
}

std::strong_ordering AppVersion::operator<=>(const AppVersion &other) const
{
    return std::tie(m_numbers, m_isRelease, m_pieces) <=>
           std::tie(other.m_numbers, other.m_isRelease, other.m_pieces);
}

bool AppVersion::operator==(const AppVersion &other) const
{
    return std::is_eq(*this <=> other);
}

} // namespace tallyfold

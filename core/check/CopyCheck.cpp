#include "core/check/CopyCheck.h"

#include "core/check/PageNumberText.h"
#include "pdf/viewing/PageReader.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

namespace tallyfold::check {

namespace {

/// A reader that a page brought down is replaced so many times for one copy.
constexpr int maxReplacements = 3;
/// Of the missing pages of one copy. Where there are more, the count of pages says enough.
constexpr std::int64_t maxTold = 1000;

/// Reads the strips of a copy's pages, with a new reader where one fails.
class StampTexts {
public:
    StampTexts(std::filesystem::path path, std::stop_token givenUp)
        : m_path(std::move(path)), m_givenUp(std::move(givenUp))
    {
        open();
    }

    [[nodiscard]] bool isOpen() const
    {
        return m_reader != nullptr;
    }

    [[nodiscard]] int pageCount() const
    {
        return m_reader->pageCount();
    }

    /// What stands on the page with the 0-based index `page`, of which the number with the index `index` of
    /// `numbers` is expected; nothing where the page cannot be read.
    [[nodiscard]] std::optional<NumberOnPage> numberOn(int page, const NumberedPages &numbers,
                                                       std::int64_t index)
    {
        if (!m_reader) {
            return std::nullopt;
        }
        auto found = look(page, numbers, index);
        if (!found) {
            m_reader.reset();
            if (m_replacements++ < maxReplacements) {
                open();
            }
        }
        return found;
    }

private:
    void open()
    {
        m_reader = pdf::PageReader::open(m_path, m_givenUp);
    }

    /// Mostly the number is where it was on the page before, and a quick look finds it.
    std::optional<NumberOnPage> look(int page, const NumberedPages &numbers, std::int64_t index)
    {
        const std::optional<pdf::Rect> crop = m_reader->cropBox(page);
        if (!crop) {
            return std::nullopt;
        }
        const auto strips = stampStrips(*crop);
        const auto quick = m_reader->quickTextIn(page, strips.at(m_strip));
        if (!quick) {
            return std::nullopt;
        }
        NumberOnPage found = numberIn(std::array{*quick}, numbers, index);
        if (found.kind == NumberOnPage::Kind::expected) {
            return found;
        }
        const auto texts = m_reader->textIn(page, strips);
        if (!texts) {
            return std::nullopt;
        }
        for (std::size_t strip = 0; strip < strips.size(); ++strip) {
            if (numberIn(std::array{texts->at(strip)}, numbers, index).kind == NumberOnPage::Kind::expected) {
                m_strip = strip;
            }
        }
        return numberIn(*texts, numbers, index);
    }

    std::filesystem::path m_path;
    std::stop_token m_givenUp;
    std::unique_ptr<pdf::PageReader> m_reader;
    int m_replacements = 0;
    std::size_t m_strip = 0; ///< Where a number was found last.
};

/// The findings of one copy.
class CopyCheck {
public:
    CopyCheck(const ProductionFolder::Copy &copy, std::size_t folder, std::stop_token givenUp)
        : m_indexed(&copy.indexed),
          m_folder(folder),
          m_givenUp(std::move(givenUp)),
          m_texts(copy.path, m_givenUp)
    {
    }

    std::vector<Finding> run(const std::function<void()> &pageDone)
    {
        if (!m_texts.isOpen()) {
            if (!m_givenUp.stop_requested()) {
                add(std::nullopt, CopyUnreadable{});
            }
            return std::move(m_findings);
        }
        const int pages = m_texts.pageCount();
        const bool isAsIndexed = pages == m_indexed->pages;
        if (!isAsIndexed) {
            add(std::nullopt, PageCountDiffers{m_indexed->pages, pages});
        }
        if (m_indexed->isCoverOnly) {
            return std::move(m_findings);
        }
        if (isTooShort(m_indexed->numbers.text(m_indexed->numbers.count - 1))) {
            add(std::nullopt, NumbersTooShort{});
            return std::move(m_findings);
        }
        for (int page = 0; page < pages && !m_givenUp.stop_requested(); ++page) {
            look(page, isAsIndexed);
            pageDone();
        }
        if (!isAsIndexed && !m_givenUp.stop_requested()) {
            tellOfNumbersOnNoPage();
        }
        return std::move(m_findings);
    }

private:
    void add(std::optional<std::int64_t> page, Finding::What what)
    {
        m_findings.push_back({m_folder, m_indexed->name, page, std::move(what)});
    }

    /// Where pages are missing or there are more, the numbers after them are in another place, each of which
    /// is not told.
    void look(int page, bool isAsIndexed)
    {
        const NumberedPages &numbers = m_indexed->numbers;
        const std::int64_t index = page + 1 - numbers.firstPage;
        const bool isNumbered = index >= 0 && index < numbers.count;
        if (!isNumbered && isAsIndexed) {
            return;
        }
        const std::int64_t asked = std::clamp<std::int64_t>(index, 0, numbers.count - 1);
        const std::optional<NumberOnPage> there = m_texts.numberOn(page, numbers, asked);
        if (m_givenUp.stop_requested()) {
            return;
        }
        if (!there) {
            add(page + 1, PageNotChecked{});
            m_isAllRead = false;
            return;
        }
        const QString number = numbers.text(asked);
        if (!isAsIndexed) {
            m_seen.insert(there->kind == NumberOnPage::Kind::expected ? withoutSpace(number) : there->text);
        } else if (there->kind == NumberOnPage::Kind::other) {
            add(page + 1, OtherNumber{number, there->text});
        } else if (there->kind == NumberOnPage::Kind::none) {
            add(page + 1, NumberMissing{number});
        }
    }

    void tellOfNumbersOnNoPage()
    {
        const NumberedPages &numbers = m_indexed->numbers;
        if (!m_isAllRead || numbers.count > m_seen.size() + maxTold) {
            return;
        }
        for (std::int64_t index = 0; index < numbers.count; ++index) {
            if (const QString number = numbers.text(index); !m_seen.contains(withoutSpace(number))) {
                add(index + numbers.firstPage, NumberMissing{number});
            }
        }
    }

    const IndexedCopy *m_indexed;
    std::size_t m_folder;
    std::stop_token m_givenUp;
    StampTexts m_texts;
    std::vector<Finding> m_findings;
    QSet<QString> m_seen; ///< Numbers that any page has.
    bool m_isAllRead = true;
};

} // namespace

std::vector<Finding> checkCopy(const ProductionFolder::Copy &copy, std::size_t folder,
                               const std::function<void()> &pageDone, const std::stop_token &givenUp)
{
    return CopyCheck(copy, folder, givenUp).run(pageDone);
}

} // namespace tallyfold::check

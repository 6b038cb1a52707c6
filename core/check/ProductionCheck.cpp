#include "core/check/ProductionCheck.h"

#include "core/check/CopyCheck.h"
#include "core/check/Covers.h"
#include "core/check/ProductionFolder.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <mutex>
#include <thread>

namespace tallyfold::check {

namespace {

/// Reader processes at once.
constexpr unsigned maxReaders = 2;

/// A copy of a production.
struct Place {
    std::size_t folder = 0;
    std::size_t copy = 0;
};

/// The productions that are checked, and what was found of each of their copies.
class Check {
public:
    Check(std::span<const std::filesystem::path> folders, const ShowProgress &show, std::stop_token givenUp)
        : m_show(&show), m_givenUp(std::move(givenUp))
    {
        for (std::size_t folder = 0; folder < folders.size(); ++folder) {
            m_productions.push_back(ProductionFolder::of(folders[folder], folder));
            m_findings.emplace_back(m_productions.back().copies.size());
            for (std::size_t copy = 0; copy < m_productions.back().copies.size(); ++copy) {
                m_places.push_back({folder, copy});
                m_progress.plannedPages += indexed(m_places.back()).pages;
            }
        }
    }

    Outcome run()
    {
        readCopies();
        Outcome outcome;
        outcome.isStopped = m_givenUp.stop_requested();
        outcome.copies = static_cast<std::int64_t>(m_places.size());
        outcome.pages = m_progress.plannedPages;
        tellOfNumbers(outcome);
        gather(outcome);
        return outcome;
    }

private:
    [[nodiscard]] const IndexedCopy &indexed(const Place &place) const
    {
        return m_productions[place.folder].copies[place.copy].indexed;
    }

    [[nodiscard]] std::vector<Finding> &findingsOf(const Place &place)
    {
        return m_findings[place.folder][place.copy];
    }

    void readCopies()
    {
        std::atomic<std::size_t> next = 0;
        const auto work = [this, &next] {
            for (std::size_t index = next++; index < m_places.size() && !m_givenUp.stop_requested();
                 index = next++) {
                readCopy(m_places[index]);
            }
        };
        std::vector<std::jthread> readers;
        for (unsigned reader = 1; reader < std::min(std::thread::hardware_concurrency(), maxReaders);
             ++reader) {
            readers.emplace_back(work);
        }
        work();
    }

    void readCopy(const Place &place)
    {
        const ProductionFolder::Copy &copy = m_productions[place.folder].copies[place.copy];
        show(copy.indexed.name, 0);
        std::int64_t pages = 0;
        std::vector<Finding> found;
        if (copy.path.empty()) {
            found.push_back({place.folder, copy.indexed.name, std::nullopt, CopyMissing{}});
        } else {
            const auto pageDone = [&] {
                show(copy.indexed.name, pages < copy.indexed.pages ? 1 : 0);
                ++pages;
            };
            found = checkCopy(copy, place.folder, pageDone, m_givenUp);
            if (auto change = m_productions[place.folder].changeOf(copy.path, m_givenUp)) {
                insert(found, place, std::move(*change));
            }
        }
        if (!m_givenUp.stop_requested()) {
            show(copy.indexed.name, std::max<std::int64_t>(copy.indexed.pages - pages, 0));
        }
        findingsOf(place) = std::move(found);
    }

    void show(const QString &name, std::int64_t pagesMore)
    {
        const std::scoped_lock lock(m_progressMutex);
        m_progress.reading = name;
        m_progress.pages += pagesMore;
        if (*m_show) {
            (*m_show)(m_progress);
        }
    }

    /// Of all folders: they may be parts of one series.
    void tellOfNumbers(Outcome &outcome)
    {
        std::vector<NumberRange> ranges;
        for (const Place &place : m_places) {
            const IndexedCopy &copy = indexed(place);
            ranges.push_back({copy.first, copy.last, copy.numbers.count});
        }
        NumberSeries series = NumberSeries::of(ranges);
        for (NumberSeries::Gap &gap : series.gaps) {
            add(m_places[gap.before], NumberGap{std::move(gap.first), std::move(gap.last)});
        }
        for (NumberSeries::Overlap &overlap : series.overlaps) {
            const Place &other = m_places[overlap.other];
            add(m_places[overlap.range], NumberTwice{std::move(overlap.first), std::move(overlap.last),
                                                     other.folder, indexed(other).name});
        }
        outcome.numbers = std::move(series.runs);
    }

    void add(const Place &place, Finding::What what)
    {
        insert(findingsOf(place), place, std::move(what));
    }

    /// Before what is told of single pages.
    void insert(std::vector<Finding> &findings, const Place &place, Finding::What what) const
    {
        const auto firstOfPage = std::find_if(findings.begin(), findings.end(), [](const Finding &finding) {
            return finding.page.has_value();
        });
        findings.insert(firstOfPage, {place.folder, indexed(place).name, std::nullopt, std::move(what)});
    }

    void gather(Outcome &outcome)
    {
        for (std::size_t folder = 0; folder < m_productions.size(); ++folder) {
            ProductionFolder &production = m_productions[folder];
            if (!outcome.isStopped) {
                tellCoversOnce(production, folder, m_findings[folder], production.findings);
            }
            const auto take = [&outcome](std::vector<Finding> &findings) {
                std::move(findings.begin(), findings.end(), std::back_inserter(outcome.findings));
            };
            take(production.findings);
            std::for_each(m_findings[folder].begin(), m_findings[folder].end(), take);
        }
    }

    const ShowProgress *m_show;
    std::stop_token m_givenUp;
    std::vector<ProductionFolder> m_productions;
    std::vector<Place> m_places;                               ///< All copies.
    std::vector<std::vector<std::vector<Finding>>> m_findings; ///< By folder and copy.
    std::mutex m_progressMutex;
    Progress m_progress;
};

} // namespace

Weight Outcome::weight() const
{
    Weight worst = Weight::remark;
    for (const Finding &finding : findings) {
        worst = std::max(worst, weightOf(finding));
    }
    return worst;
}

bool Outcome::isWhole() const
{
    return !isStopped && weight() == Weight::remark;
}

Outcome checkProductions(std::span<const std::filesystem::path> folders, const ShowProgress &show,
                         const std::stop_token &givenUp)
{
    return Check(folders, show, givenUp).run();
}

} // namespace tallyfold::check

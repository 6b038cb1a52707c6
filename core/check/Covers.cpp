#include "core/check/Covers.h"

#include <algorithm>

namespace tallyfold::check {

namespace {

bool isMissingOnFirstPage(const Finding &finding)
{
    return finding.page == 1 && std::holds_alternative<NumberMissing>(finding.what);
}

/// Whether it is known what page 1 shows.
bool isFirstPageRead(const ProductionFolder::Copy &copy, const std::vector<Finding> &findings)
{
    return !copy.path.empty() && std::none_of(findings.begin(), findings.end(), [](const Finding &finding) {
        return std::holds_alternative<CopyUnreadable>(finding.what) ||
               std::holds_alternative<NumbersTooShort>(finding.what) ||
               std::holds_alternative<PageCountDiffers>(finding.what) ||
               (finding.page == 1 && std::holds_alternative<PageNotChecked>(finding.what));
    });
}

} // namespace

void tellCoversOnce(const ProductionFolder &production, std::size_t folder,
                    std::vector<std::vector<Finding>> &findings, std::vector<Finding> &ofProduction)
{
    std::int64_t covers = 0;
    for (std::size_t index = 0; index < production.copies.size(); ++index) {
        const ProductionFolder::Copy &copy = production.copies[index];
        if (copy.indexed.isCoverOnly || !isFirstPageRead(copy, findings[index])) {
            continue;
        }
        // A copy of one page that the index calls stamped has a number on it where there are covers, too.
        if (copy.indexed.numbers.firstPage != 1 || copy.indexed.pages == 1 ||
            std::none_of(findings[index].begin(), findings[index].end(), isMissingOnFirstPage)) {
            return;
        }
        ++covers;
    }
    if (covers == 0) {
        return;
    }
    for (std::vector<Finding> &ofCopy : findings) {
        std::erase_if(ofCopy, isMissingOnFirstPage);
    }
    ofProduction.push_back({folder, {}, std::nullopt, CoversWithoutNumber{covers}});
}

} // namespace tallyfold::check

#include "core/check/Finding.h"

namespace tallyfold::check {

Weight weightOf(const Finding &finding)
{
    if (std::holds_alternative<CoversWithoutNumber>(finding.what)) {
        return Weight::remark;
    }
    if (std::holds_alternative<PageNotChecked>(finding.what) ||
        std::holds_alternative<NumbersTooShort>(finding.what)) {
        return Weight::notChecked;
    }
    return Weight::fault;
}

} // namespace tallyfold::check

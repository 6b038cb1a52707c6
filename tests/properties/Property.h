#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <rapidcheck/detail/Configuration.h>

#include <sstream>
#include <string>
#include <utility>

namespace tallyfold::tests {

/// Holds `property` to `cases` random cases, which it takes by `*generator`; it tells by RC_ASSERT. A case
/// that fails is made as small as it can be, and told with the seed that finds it again:
/// RC_PARAMS="seed=…" in the environment.
template <typename Property> void holdsAlways(Property &&property, int cases)
{
    const testing::TestInfo &test = *testing::UnitTest::GetInstance()->current_test_info();
    rc::detail::TestMetadata metadata;
    metadata.id = std::string(test.test_suite_name()) + '/' + test.name();
    metadata.description = test.name();
    rc::detail::TestParams params = rc::detail::configuration().testParams;
    params.maxSuccess = cases;
    const rc::detail::TestResult result =
        rc::detail::checkTestable(std::forward<Property>(property), metadata, params);
    if (!result.is<rc::detail::SuccessResult>()) {
        std::ostringstream told;
        rc::detail::printResultMessage(result, told);
        FAIL() << "RC_PARAMS=\"seed=" << params.seed << "\"\n" << told.str();
    }
}

} // namespace tallyfold::tests

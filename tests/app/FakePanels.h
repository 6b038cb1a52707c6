#pragma once

#include "app/Panels.h"

#include <filesystem>
#include <vector>

namespace tallyfold::tests {

/// Panels that give what a test put ready, and note what they were asked.
class FakePanels final : public Panels {
public:
    std::vector<std::filesystem::path> answer; ///< Empty: cancelled.
    QStringList lost;                          ///< What cannot be found besides.
    std::vector<OpenPanel> asked;

    PanelAnswer run(const OpenPanel &panel) override
    {
        asked.push_back(panel);
        return {answer, lost};
    }
};

} // namespace tallyfold::tests

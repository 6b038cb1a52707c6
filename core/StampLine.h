#pragma once

#include "core/StampSettings.h"

#include <QString>

namespace tallyfold::Stamper {

/// One line of the stamp, its text final.
struct Line {
    QString text;
    StampPosition position = StampPosition::bottomRight;
    bool operator==(const Line &) const = default;
};

} // namespace tallyfold::Stamper

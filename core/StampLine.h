#pragma once

#include "core/StampSettings.h"

#include <QString>

namespace tallyfold::Stamper {

/// One line of the stamp, with its final text.
struct Line {
    QString text;
    StampPosition position = StampPosition::bottomRight;
    bool operator==(const Line &) const = default;
};

} // namespace tallyfold::Stamper

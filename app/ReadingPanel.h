#pragma once

namespace tallyfold {

class SourceReading;

/// Shows what is being read. The model waits through this, so that it needs no window.
class ReadingPanel {
public:
    virtual ~ReadingPanel() = default;

    /// Returns when `reading` is over, or when nobody waits for it any more.
    virtual void await(SourceReading &reading) = 0;
};

} // namespace tallyfold

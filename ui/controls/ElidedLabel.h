#pragma once

#include "ui/controls/StyledLabel.h"

namespace tallyfold {

/// A text of the user's, such as the name of a file, on one line: cut in its middle where it has no room, and
/// then told whole as a tooltip. However long it is, what it stands in gets no wider by it.
class ElidedLabel final : public StyledLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(TextStyle style, Tone tone = Tone::text, QWidget *parent = nullptr);
    ElidedLabel(const QString &text, TextStyle style, Tone tone = Tone::text, QWidget *parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// The text as it is shown.
    [[nodiscard]] QString shownText() const;
};

} // namespace tallyfold

#pragma once

#include "ui/controls/StyledLabel.h"

namespace tallyfold {

/// Text from the user, such as a file name, on one line. Elided in the middle if it does not fit, with the
/// whole text as a tooltip. Its length does not affect the width of the layout.
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
    /// The text as displayed.
    [[nodiscard]] QString shownText() const;
};

} // namespace tallyfold

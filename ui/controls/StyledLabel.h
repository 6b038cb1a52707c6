#pragma once

#include "ui/controls/WrappedText.h"
#include "ui/theme/Tones.h"
#include "ui/theme/Typography.h"

#include <QLabel>

namespace tallyfold {

/// Text in a style and a tone, which follows the font and the colours of the system. Wraps by default, even
/// within words that are wider than the label, so that its text does not affect the width of the layout.
class StyledLabel : public QLabel {
    Q_OBJECT
public:
    explicit StyledLabel(TextStyle style, Tone tone = Tone::text, QWidget *parent = nullptr);
    StyledLabel(const QString &text, TextStyle style, Tone tone = Tone::text, QWidget *parent = nullptr);

    /// Uses digits of equal width.
    void setTabularDigits();
    /// Makes the text selectable with mouse and keyboard.
    void setSelectable();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void dress();
    /// Whether every word fits on a line of a label that is `width` wide.
    [[nodiscard]] bool haveWordsRoom(int width) const;
    [[nodiscard]] WrappedText brokenText(int width) const;

    TextStyle m_style;
    Tone m_tone;
    bool m_hasTabularDigits = false;
};

} // namespace tallyfold

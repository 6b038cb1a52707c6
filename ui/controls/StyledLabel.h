#pragma once

#include "ui/controls/WrappedText.h"
#include "ui/theme/Tones.h"
#include "ui/theme/Typography.h"

#include <QLabel>

namespace tallyfold {

/// Text of a style and a tone, which follows the system's font and colours. Wraps by default, in the middle
/// of a word where the word is wider than the label: whatever it says, what it stands in gets no wider by it.
class StyledLabel : public QLabel {
    Q_OBJECT
public:
    explicit StyledLabel(TextStyle style, Tone tone = Tone::text, QWidget *parent = nullptr);
    StyledLabel(const QString &text, TextStyle style, Tone tone = Tone::text, QWidget *parent = nullptr);

    /// Digits of one width.
    void setTabularDigits();
    /// Lets the text be selected and copied, with the mouse and the keyboard.
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
    /// Whether every word has room on a line of a label that is `width` wide.
    [[nodiscard]] bool haveWordsRoom(int width) const;
    [[nodiscard]] WrappedText brokenText(int width) const;

    TextStyle m_style;
    Tone m_tone;
    bool m_hasTabularDigits = false;
};

} // namespace tallyfold

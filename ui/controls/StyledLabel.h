#pragma once

#include "ui/theme/Tones.h"
#include "ui/theme/Typography.h"

#include <QLabel>

namespace tallyfold {

/// Text of a style and a tone, which follows the system's font and colours. Wraps by default.
class StyledLabel : public QLabel {
    Q_OBJECT
public:
    explicit StyledLabel(TextStyle style, Tone tone = Tone::text, QWidget *parent = nullptr);
    StyledLabel(const QString &text, TextStyle style, Tone tone = Tone::text, QWidget *parent = nullptr);

    /// Digits of one width.
    void setTabularDigits();
    /// Lets the text be selected and copied, with the mouse and the keyboard.
    void setSelectable();

protected:
    void changeEvent(QEvent *event) override;

private:
    void dress();

    TextStyle m_style;
    Tone m_tone;
    bool m_hasTabularDigits = false;
};

} // namespace tallyfold

#pragma once

#include "ui/theme/Tones.h"

#include <QAbstractButton>
#include <QString>

#include <cstdint>
#include <optional>

namespace tallyfold {

/// A sign that something in a section needs attention.
struct SectionSign {
    QString symbol;
    Tone tone = Tone::warning;
    QString text; ///< The message.

    bool operator==(const SectionSign &) const = default;
};

/// The header of a numbered section: its number in a disc, its title, and an indicator of whether the section
/// is open. A click or the space bar toggles it.
class SectionTitle final : public QAbstractButton {
    Q_OBJECT
public:
    SectionTitle(std::int64_t number, const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] std::int64_t number() const;
    [[nodiscard]] QString title() const;
    /// Shows `sign` while the section is closed, which hides the warning itself.
    void setSign(const std::optional<SectionSign> &sign);
    /// The sign currently shown.
    [[nodiscard]] std::optional<SectionSign> shownSign() const;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void tellSign();

    std::int64_t m_number;
    QString m_title;
    std::optional<SectionSign> m_sign;
};

} // namespace tallyfold

#pragma once

#include <QValidator>

#include <cstdint>

namespace tallyfold {

/// Limits input to a number of user-perceived characters. An insertion that exceeds the limit is truncated;
/// the text after it is kept.
class LengthLimit final : public QValidator {
    Q_OBJECT
public:
    explicit LengthLimit(std::int64_t longest, QObject *parent = nullptr);

    State validate(QString &text, int &cursor) const override;

private:
    std::int64_t m_longest;
};

} // namespace tallyfold

#pragma once

#include <QValidator>

#include <cstdint>

namespace tallyfold {

/// Keeps what is typed to so many user-perceived characters. Of what is put in beyond that, the end is left
/// out, and what stood behind it stays.
class LengthLimit final : public QValidator {
    Q_OBJECT
public:
    explicit LengthLimit(std::int64_t longest, QObject *parent = nullptr);

    State validate(QString &text, int &cursor) const override;

private:
    std::int64_t m_longest;
};

} // namespace tallyfold

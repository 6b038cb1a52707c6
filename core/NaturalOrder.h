#pragma once

#include <QString>

#include <cstddef>
#include <memory>
#include <vector>

namespace tallyfold {

/// The order in which people expect names in a list, for the collation locale of the user: the first of
/// `LC_ALL`, `LC_COLLATE` and `LANG` that is not empty, regardless of the language of messages. Runs of
/// digits compare by value ("2" before "10"); letter case and accents are ignored (ICU collation, primary
/// strength, UTS #10).
class NaturalOrder {
public:
    /// For the locale in the current environment.
    NaturalOrder();
    ~NaturalOrder();
    NaturalOrder(const NaturalOrder &) = delete;
    NaturalOrder &operator=(const NaturalOrder &) = delete;

    /// Less than, equal to or greater than 0 if `left` sorts before, with or after `right`.
    [[nodiscard]] int compare(const QString &left, const QString &right) const;

    /// The indices of `names` in natural order. The sort is stable.
    [[nodiscard]] std::vector<std::size_t> sorted(const std::vector<QString> &names) const;

private:
    struct Collator;
    std::unique_ptr<Collator> m_collator;
};

} // namespace tallyfold

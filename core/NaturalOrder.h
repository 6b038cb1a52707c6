#pragma once

#include <QString>

#include <cstddef>
#include <memory>
#include <vector>

namespace tallyfold {

/// The order in which people expect names to stand in a list, in the language that the user's locale sets for
/// collation (`LC_ALL`, `LC_COLLATE`, `LANG`, empty ones not counting), whatever that of messages is: runs of
/// digits compare by value ("2" before "10"), letter case and accents alone never decide (ICU collation,
/// primary strength, UTS #10).
class NaturalOrder {
public:
    /// For the user's locale, as the environment has it now.
    NaturalOrder();
    ~NaturalOrder();
    NaturalOrder(const NaturalOrder &) = delete;
    NaturalOrder &operator=(const NaturalOrder &) = delete;

    /// Less than, equal to or greater than 0, as `left` stands before, with or after `right`.
    [[nodiscard]] int compare(const QString &left, const QString &right) const;

    /// The positions of `names` in natural order; names that compare the same keep theirs.
    [[nodiscard]] std::vector<std::size_t> sorted(const std::vector<QString> &names) const;

private:
    struct Collator;
    std::unique_ptr<Collator> m_collator;
};

} // namespace tallyfold

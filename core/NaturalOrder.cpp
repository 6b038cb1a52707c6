#include "core/NaturalOrder.h"

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <numeric>
#include <string>
#include <unicode/coll.h>
#include <unicode/localebuilder.h>
#include <unicode/sortkey.h>
#include <unicode/unistr.h>

namespace tallyfold {

namespace {

icu::UnicodeString alias(const QString &text)
{
    return {false, reinterpret_cast<const char16_t *>(text.utf16()), static_cast<int32_t>(text.size())};
}

/// The collation locale: the first of these variables that is not empty (POSIX.1-2017, 8.2). The default of
/// ICU is the language of messages, but the language of menus must not change how files are numbered.
QByteArray collationSetting()
{
    for (const char *name : {"LC_ALL", "LC_COLLATE", "LANG"}) {
        if (QByteArray value = qgetenv(name); !value.isEmpty()) {
            return value;
        }
    }
    return {};
}

/// The script that a POSIX locale names after its "@", if any; other modifiers do not affect collation.
const char *scriptOf(QByteArrayView modifier)
{
    return modifier == "latin" ? "Latn" : modifier == "cyrillic" ? "Cyrl" : "";
}

/// The locale with the POSIX name `name`: language[_territory][.codeset][@modifier], of which ICU understands
/// all but the modifier. The root locale for "C" and "POSIX", since names are read by people all the same.
icu::Locale localeCalled(const QByteArray &name)
{
    const QList<QByteArray> parts = name.split('@');
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale = icu::LocaleBuilder()
                                   .setLocale(icu::Locale(parts.front().constData()))
                                   .setScript(scriptOf(parts.size() > 1 ? parts[1] : QByteArray()))
                                   .build(status);
    return U_SUCCESS(status) ? locale : icu::Locale::getRoot();
}

} // namespace

struct NaturalOrder::Collator {
    std::unique_ptr<icu::Collator> collator; ///< Null only where ICU has no data at all.
};

NaturalOrder::NaturalOrder() : m_collator(std::make_unique<Collator>())
{
    UErrorCode status = U_ZERO_ERROR;
    m_collator->collator.reset(icu::Collator::createInstance(localeCalled(collationSetting()), status));
    if (U_FAILURE(status)) {
        m_collator->collator.reset();
        return;
    }
    icu::Collator &collator = *m_collator->collator;
    collator.setStrength(icu::Collator::PRIMARY);
    collator.setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    collator.setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, status); // "a b" is not "ab".
}

NaturalOrder::~NaturalOrder() = default;

int NaturalOrder::compare(const QString &left, const QString &right) const
{
    if (!m_collator->collator) {
        return left.compare(right, Qt::CaseInsensitive);
    }
    UErrorCode status = U_ZERO_ERROR;
    return m_collator->collator->compare(alias(left), alias(right), status);
}

std::vector<std::size_t> NaturalOrder::sorted(const std::vector<QString> &names) const
{
    std::vector<std::size_t> order(names.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (!m_collator->collator) {
        std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
            return compare(names[left], names[right]) < 0;
        });
        return order;
    }
    // A sort key costs more than one comparison, but less than the many comparisons of a sort.
    std::vector<std::string> keys;
    keys.reserve(names.size());
    std::vector<std::uint8_t> buffer(256);
    for (const QString &name : names) {
        const icu::UnicodeString text = alias(name);
        int32_t length =
            m_collator->collator->getSortKey(text, buffer.data(), static_cast<int32_t>(buffer.size()));
        if (static_cast<std::size_t>(length) > buffer.size()) {
            buffer.resize(static_cast<std::size_t>(length));
            length = m_collator->collator->getSortKey(text, buffer.data(), length);
        }
        keys.emplace_back(buffer.begin(), buffer.begin() + length);
    }
    std::stable_sort(order.begin(), order.end(),
                     [&keys](std::size_t left, std::size_t right) { return keys[left] < keys[right]; });
    return order;
}

} // namespace tallyfold

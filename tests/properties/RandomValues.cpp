#include "tests/properties/RandomValues.h"

#include <array>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tallyfold {

namespace {

template <typename Case, std::size_t count>
rc::Gen<Case> casesOf(const std::array<StoredCase<Case>, count> &keys)
{
    std::vector<Case> cases;
    for (const StoredCase<Case> &key : keys) {
        cases.push_back(key.value);
    }
    return rc::gen::elementOf(cases);
}

template <typename Case, std::size_t count>
const char *keyOf(Case value, const std::array<StoredCase<Case>, count> &keys)
{
    for (const StoredCase<Case> &key : keys) {
        if (key.value == value) {
            return key.key;
        }
    }
    return "?";
}

/// `text` with what cannot be seen in a terminal as its number.
std::string shown(const QString &text)
{
    std::string out = "\"";
    for (const QChar unit : text) {
        if (unit >= u' ' && unit < u'\x7f') {
            out += unit.toLatin1();
        } else {
            out += "\\u" + QString::number(unit.unicode(), 16).rightJustified(4, u'0').toStdString();
        }
    }
    return out + '"';
}

rc::Gen<QString> joined(const rc::Gen<std::vector<QString>> &pieces)
{
    return rc::gen::map(pieces, [](const std::vector<QString> &list) {
        QString text;
        for (const QString &piece : list) {
            text += piece;
        }
        return text;
    });
}

rc::Gen<double> numbers()
{
    using Limits = std::numeric_limits<double>;
    return rc::gen::oneOf(
        rc::gen::map(rc::gen::inRange(-300, 900), [](int quarters) { return quarters / 4.0; }),
        rc::gen::elementOf(std::vector<double>{0, -0.0, 4, 72, 144, Limits::max(), Limits::lowest(),
                                               Limits::denorm_min(), Limits::infinity(), -Limits::infinity(),
                                               Limits::quiet_NaN()}),
        rc::gen::arbitrary<double>());
}

rc::Gen<std::int64_t> integers(std::int64_t highest)
{
    using Limits = std::numeric_limits<std::int64_t>;
    return rc::gen::oneOf(
        rc::gen::inRange<std::int64_t>(-2, 20), rc::gen::inRange<std::int64_t>(highest - 3, highest + 3),
        rc::gen::elementOf(std::vector<std::int64_t>{Limits::min(), Limits::max(), 998, 999'998}),
        rc::gen::arbitrary<std::int64_t>());
}

/// Values of the member with the stored `key`.
template <typename Value> rc::Gen<Value> valuesOf(std::string_view key, Value StampSettings::* /*member*/)
{
    if constexpr (std::is_enum_v<Value>) {
        return casesOf(storedCases(Value{}));
    } else if constexpr (std::is_same_v<Value, QString>) {
        return tests::texts();
    } else if constexpr (std::is_same_v<Value, double>) {
        return numbers();
    } else if constexpr (std::is_same_v<Value, std::int64_t>) {
        return integers(key == "digits" ? StampSettings::digitRange.highest : StampSettings::maxStart);
    } else if constexpr (std::is_same_v<Value, StampColor>) {
        using rc::gen::set;
        return rc::gen::build<StampColor>(
            set(&StampColor::red, numbers()), set(&StampColor::green, numbers()),
            set(&StampColor::blue, numbers()), set(&StampColor::alpha, numbers()));
    } else {
        return rc::gen::arbitrary<Value>();
    }
}

template <typename Value> void print(std::ostream &out, const Value &value)
{
    if constexpr (std::is_enum_v<Value>) {
        out << keyOf(value, storedCases(value));
    } else if constexpr (std::is_same_v<Value, QString>) {
        out << shown(value);
    } else if constexpr (std::is_same_v<Value, StampColor>) {
        out << value.red << ' ' << value.green << ' ' << value.blue << ' ' << value.alpha;
    } else {
        out << value;
    }
}

} // namespace

std::ostream &operator<<(std::ostream &out, const StampSettings &settings)
{
    const char *separator = "{";
    forEachField([&](const char *key, auto member) {
        out << std::exchange(separator, ", ") << key << ' ';
        print(out, settings.*member);
    });
    return out << '}';
}

std::ostream &operator<<(std::ostream &out, const SourceFile &source)
{
    out << '{' << shown(source.name) << ", " << source.pageCount << " pages, of " << source.modified.seconds
        << '.' << source.modified.nanoseconds;
    return source.problem ? out << ", " << keyOf(*source.problem).toStdString() << '}' : out << '}';
}

namespace tests {

rc::Gen<QString> texts()
{
    static const std::vector<QString> pieces{
        QStringLiteral("a"),      QStringLiteral("Z"),          QStringLiteral("7"),
        QStringLiteral(" "),      QStringLiteral("\t"),         QStringLiteral("\n"),
        QStringLiteral("\r\n"),   QStringLiteral("\v"),         QStringLiteral("\f"),
        QStringLiteral("\u0085"), QStringLiteral("\u2028"),     QStringLiteral("\u2029"),
        QStringLiteral("\u00A0"), QStringLiteral("\u3000"),     QStringLiteral("\u200F"),
        QString(QChar(0)),        QStringLiteral("\x1B"),       QStringLiteral("\x7F"),
        QStringLiteral("\""),     QStringLiteral("\\"),         QStringLiteral("'"),
        QStringLiteral(","),      QStringLiteral("="),          QStringLiteral("/"),
        QStringLiteral(":"),      QStringLiteral("."),          QStringLiteral("..pdf"),
        QStringLiteral(".PDF"),   QStringLiteral("{page}"),     QStringLiteral("{total}"),
        QStringLiteral("é"),      QStringLiteral("e\u0301"),    QStringLiteral("\u0301"),
        QStringLiteral("机"),     QStringLiteral("\U0001F512"), QStringLiteral("\U0001F468\u200D\U0001F469"),
        QString(30, u'x')};
    return joined(rc::gen::container<std::vector<QString>>(rc::gen::elementOf(pieces)));
}

rc::Gen<QString> fileNames()
{
    static const std::vector<QString> pieces{
        QStringLiteral("a"),    QStringLiteral("A"),     QStringLiteral("ä"),   QStringLiteral("2"),
        QStringLiteral("10"),   QStringLiteral(" "),     QStringLiteral("b/c"), QStringLiteral("."),
        QStringLiteral(":"),    QStringLiteral("\n"),    QStringLiteral("-"),   QStringLiteral(".pdf"),
        QStringLiteral(".PDF"), QStringLiteral("v1.2 x")};
    const auto short_ =
        joined(rc::gen::resize(3, rc::gen::container<std::vector<QString>>(rc::gen::elementOf(pieces))));
    return rc::gen::oneOf(
        rc::gen::map(short_, [](const QString &name) { return name + QStringLiteral(".pdf"); }), short_,
        texts());
}

rc::Gen<StampSettings> rawSettings()
{
    return rc::gen::exec([] {
        StampSettings settings;
        forEachField([&](const char *key, auto member) { settings.*member = *valuesOf(key, member); });
        return settings;
    });
}

rc::Gen<StampSettings> finiteSettings()
{
    return rc::gen::map(rawSettings(), [](StampSettings settings) {
        const StampColor &color = settings.color;
        settings.color = StampColor::of(color.red, color.green, color.blue, color.alpha);
        return settings;
    });
}

rc::Gen<std::vector<SourceFile>> sourceLists()
{
    using rc::gen::set;
    static const std::vector<FileDate> dates{distantPast(), {-1, 999'999'999}, {0, 0}, {0, 1}, {7, 0}};
    static const std::vector<std::optional<SourceProblem>> problems{std::nullopt,
                                                                    std::nullopt,
                                                                    std::nullopt,
                                                                    SourceProblem::locked,
                                                                    SourceProblem::encrypted,
                                                                    SourceProblem::unreadable,
                                                                    SourceProblem::empty};
    const auto source =
        rc::gen::build<SourceFile>(set(&SourceFile::name, fileNames()),
                                   set(&SourceFile::pageCount, rc::gen::inRange<std::int64_t>(0, 7)),
                                   set(&SourceFile::modified, rc::gen::elementOf(dates)),
                                   set(&SourceFile::problem, rc::gen::elementOf(problems)));
    return rc::gen::resize(12, rc::gen::container<std::vector<SourceFile>>(source));
}

} // namespace tests

} // namespace tallyfold

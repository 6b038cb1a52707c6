#include "core/Production.h"

#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "tests/properties/Property.h"
#include "tests/support/FaultyCalls.h"
#include "tests/support/Sample.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <map>
#include <set>
#include <sys/stat.h>
#include <variant>

namespace tallyfold {

namespace fs = std::filesystem;
using tests::FaultyCalls;
using tests::FileCall;
using tests::holdsAlways;
using tests::readFile;
using tests::TemporaryFolder;
using tests::writeFile;

namespace {

constexpr const char *indexName = "Production Index.csv";
constexpr const char *logName = "Privilege Log.csv";

/// What a source is.
enum class Kind { onePage, twoPages, threePages, locked, restricted, empty, broken };

/// A source: what it is, in which folder and under which name it lies, and whether a link leads there.
struct Source {
    Kind kind = Kind::onePage;
    std::string folder;
    std::string name;
    bool isLinked = false;
};

/// Something that is none of ours in the output folder, from the beginning or from a page on.
struct Stranger {
    enum class Kind { file, folder, danglingLink, linkToASource };
    Kind kind = Kind::file;
    std::string name;
    std::int64_t fromPage = 0; ///< 0: from the beginning.
};

/// File calls of one kind that fail from one of them on.
struct Refusal {
    std::string kind; ///< Empty: none fails.
    int from = 0;
    bool isForGood = false;
    int error = 0;
};

/// A production and what befalls it.
struct Case {
    std::vector<Source> sources;
    std::vector<Stranger> strangers;
    Refusal refusal;
    std::string output; ///< The output folder, which may be one of sources, or a link to one.
    std::int64_t stopAtPage = 0;
    OutputNaming naming = OutputNaming::original;
    CoverOption cover = CoverOption::stampAll;
    bool writeIndex = true;
    bool writeLog = true;

    /// Whether nothing happens meanwhile, so that a production without conflicts is written whole.
    [[nodiscard]] bool isQuiet() const
    {
        return refusal.kind.empty() && stopAtPage == 0 &&
               std::none_of(strangers.begin(), strangers.end(),
                            [](const Stranger &stranger) { return stranger.fromPage > 0; });
    }
};

std::ostream &operator<<(std::ostream &out, const Case &random)
{
    for (const Source &source : random.sources) {
        out << source.folder << '/' << source.name << " (kind " << static_cast<int>(source.kind)
            << (source.isLinked ? ", a link)" : ")") << "; ";
    }
    out << "into " << random.output << " with ";
    for (const Stranger &stranger : random.strangers) {
        out << stranger.name << " (kind " << static_cast<int>(stranger.kind) << ", from page "
            << stranger.fromPage << "); ";
    }
    if (!random.refusal.kind.empty()) {
        out << "no " << random.refusal.kind << " from call " << random.refusal.from
            << (random.refusal.isForGood ? " on" : " alone") << ", error " << random.refusal.error << "; ";
    }
    return out << "stopped at page " << random.stopAtPage << ", naming " << static_cast<int>(random.naming)
               << ", cover " << static_cast<int>(random.cover) << ", index " << random.writeIndex << ", log "
               << random.writeLog;
}

rc::Gen<std::string> oneOf(const std::vector<std::string> &names)
{
    return rc::gen::elementOf(names);
}

rc::Gen<Case> cases()
{
    using rc::gen::elementOf;
    using rc::gen::set;
    const auto source = rc::gen::build<Source>(
        set(&Source::kind, elementOf(std::vector<Kind>{Kind::onePage, Kind::twoPages, Kind::twoPages,
                                                       Kind::twoPages, Kind::threePages, Kind::locked,
                                                       Kind::restricted, Kind::empty, Kind::broken})),
        set(&Source::folder, oneOf({"in", "in", "in", "in2", "in2", "In", "out"})),
        set(&Source::name,
            oneOf({"a.pdf", "a.pdf", "A.pdf", "b.pdf", "b.pdf", "B.PDF", "c d.pdf", "\xC3\xA9.pdf",
                   "e\xCC\x81.pdf", "line\nbreak.pdf", "\"x\", y.pdf", "ABC000001.pdf"})),
        set(&Source::isLinked, rc::gen::element(false, false, false, true)));
    const auto stranger = rc::gen::build<Stranger>(
        set(&Stranger::kind, elementOf(std::vector<Stranger::Kind>{
                                 Stranger::Kind::file, Stranger::Kind::folder, Stranger::Kind::danglingLink,
                                 Stranger::Kind::linkToASource})),
        set(&Stranger::name, oneOf({"a.pdf", "b.pdf", "c d.pdf", "ABC000001.pdf", "ABC000002.pdf", "y.txt",
                                    "y.pdf", "z.txt", "z.pdf", indexName, logName})),
        set(&Stranger::fromPage, elementOf(std::vector<std::int64_t>{0, 0, 1, 2})));
    const auto refusal = rc::gen::build<Refusal>(
        set(&Refusal::kind,
            oneOf({"", "", "", "", "", "", "open", "write", "syncData", "rename", "link", "readAt", "sync"})),
        set(&Refusal::from, rc::gen::inRange(0, 8)), set(&Refusal::isForGood, rc::gen::arbitrary<bool>()),
        set(&Refusal::error, elementOf(std::vector<int>{EACCES, EROFS, ENOSPC, EIO, EINVAL})));
    const auto some = [](int most, const auto &generator) {
        using Value = typename std::decay_t<decltype(generator)>::ValueType;
        return rc::gen::resize(most, rc::gen::container<std::vector<Value>>(generator));
    };
    return rc::gen::build<Case>(
        set(&Case::sources, rc::gen::nonEmpty(some(8, source))), set(&Case::strangers, some(2, stranger)),
        set(&Case::refusal, refusal), set(&Case::output, oneOf({"out", "out", "out", "out", "link", "in"})),
        set(&Case::stopAtPage, elementOf(std::vector<std::int64_t>{0, 0, 0, 0, 0, 0, 2, 5})),
        set(&Case::naming,
            elementOf(std::vector<OutputNaming>{OutputNaming::original, OutputNaming::batesFirst,
                                                OutputNaming::batesRange, OutputNaming::batesAndOriginal})),
        set(&Case::cover,
            elementOf(std::vector<CoverOption>{CoverOption::stampAll, CoverOption::skipKeepNumber,
                                               CoverOption::skipNoNumber})),
        set(&Case::writeIndex, rc::gen::element(true, true, true, false)),
        set(&Case::writeLog, rc::gen::arbitrary<bool>()));
}

/// The bytes of a file of each kind. Made once: a tool encrypts.
const std::string &bytesOf(Kind kind)
{
    static const std::map<Kind, std::string> all = [] {
        const TemporaryFolder folder;
        std::map<Kind, std::string> made;
        for (const auto &[pages, of] :
             {std::pair{1, Kind::onePage}, {2, Kind::twoPages}, {3, Kind::threePages}}) {
            tests::writeSample(folder / "a.pdf", pages);
            made[of] = readFile(folder / "a.pdf");
        }
        tests::encrypt(folder / "a.pdf", folder / "b.pdf", "secret owner 256");
        made[Kind::locked] = readFile(folder / "b.pdf");
        tests::encrypt(folder / "a.pdf", folder / "b.pdf", "'' owner 256 --extract=n");
        made[Kind::restricted] = readFile(folder / "b.pdf");
        made[Kind::empty] = tests::smallPdf({});
        made[Kind::broken] = "no PDF";
        return made;
    }();
    return all.at(kind);
}

/// Everything about a file, a link or a folder that must not change.
struct State {
    fs::file_type type = fs::file_type::none;
    std::string content; ///< The bytes of a file, the target of a link.
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    ino_t inode = 0;

    bool operator==(const State &) const = default;
};

using States = std::map<std::string, State>;

State stateOf(const fs::path &path)
{
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return {};
    }
    State state{fs::symlink_status(path).type(), {}, 0, 0, status.st_ino};
    if (state.type == fs::file_type::regular) {
        state.content = readFile(path);
    } else if (state.type == fs::file_type::symlink) {
        state.content = fs::read_symlink(path).native();
    }
    if (state.type != fs::file_type::directory) { // The date of a folder is that of its last new name.
        state.seconds = status.st_mtim.tv_sec;
        state.nanoseconds = status.st_mtim.tv_nsec;
    }
    return state;
}

States statesBelow(const fs::path &folder)
{
    States states;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder)) {
        states.emplace(entry.path().native(), stateOf(entry.path()));
    }
    return states;
}

/// The fields of CSV text (RFC 4180), by rows.
std::vector<std::vector<std::string>> rowsOf(const std::string &csv)
{
    std::vector<std::vector<std::string>> rows(1, {""});
    bool isQuoted = false;
    for (std::size_t at = 0; at < csv.size(); ++at) {
        if (csv[at] == '"') {
            const bool isOne = isQuoted && at + 1 < csv.size() && csv[at + 1] == '"';
            isQuoted = isOne || !isQuoted;
            if (isOne) {
                rows.back().back() += csv[at++];
            }
        } else if (!isQuoted && csv[at] == ',') {
            rows.back().emplace_back();
        } else if (!isQuoted && csv[at] == '\r' && csv[at + 1] == '\n') {
            rows.push_back({""});
            ++at;
        } else {
            rows.back().back() += csv[at];
        }
    }
    rows.pop_back(); // After the last line end there is nothing.
    return rows;
}

using Outcome = std::variant<ProductionResult, ProductionError, FileError>;

/// Makes what a case says, writes the production, and holds what is there then to the three promises.
class Trial {
public:
    explicit Trial(const Case &random) : m_case(random)
    {
        for (const char *name : {"in", "in2", "In", "out", "elsewhere"}) {
            fs::create_directories(m_folder / name);
        }
        fs::create_directory_symlink("out", m_folder / "link");
        for (const Source &source : random.sources) {
            add(source);
        }
        for (const Stranger &stranger : random.strangers) {
            if (stranger.fromPage == 0) {
                add(stranger);
            }
        }
        StampSettings settings;
        settings.order = FileOrder::manual;
        settings.naming = random.naming;
        settings.cover = random.cover;
        std::vector<SourceFile> sources;
        for (const fs::path &path : m_sources) {
            sources.push_back(classify(path, EarlierNumbers::leaveOut));
        }
        m_plan.emplace(sources, settings);
        for (const PlannedFile *file : m_plan->stampedFiles()) {
            m_copies.emplace(file->outputName.toStdString(), Stamper::data(*file, settings, 1000));
        }
        m_before = statesBelow(m_folder.path());
    }

    void run()
    {
        const Outcome outcome = write();
        const States after = statesBelow(m_folder.path());
        for (const auto &[path, state] : m_before) {
            const auto found = after.find(path);
            RC_ASSERT(found != after.end());
            RC_ASSERT(found->second == state); // No original was touched, and nothing replaced.
        }
        std::set<std::string> made;
        for (const auto &[path, state] : after) {
            if (!m_before.contains(path)) {
                RC_ASSERT(fs::path(path).parent_path() == fs::canonical(output()));
                RC_ASSERT(state.type == fs::file_type::regular);
                made.insert(fs::path(path).filename());
            }
        }
        const bool hasIndex = made.erase(indexName) == 1;
        const bool hasLog = made.erase(logName) == 1;
        for (const std::string &name : made) {
            const auto copy = m_copies.find(name);
            RC_ASSERT(copy != m_copies.end());
            RC_ASSERT(readFile(output() / name) == std::string(copy->second.begin(), copy->second.end()));
        }
        hold(outcome, made, hasIndex, hasLog);
        if (hasIndex) {
            holdIndex(made);
        }
    }

private:
    [[nodiscard]] fs::path output() const
    {
        return m_folder / m_case.output;
    }

    void add(const Source &source)
    {
        const fs::path path = m_folder / source.folder / source.name;
        if (std::find(m_sources.begin(), m_sources.end(), path) != m_sources.end()) {
            return; // Such a file is there already.
        }
        const fs::path real =
            source.isLinked ? m_folder / "elsewhere" / std::to_string(m_sources.size()) : path;
        writeFile(real, bytesOf(source.kind));
        if (source.isLinked) {
            fs::create_symlink(real, path);
        }
        m_sources.push_back(path);
    }

    /// Puts it there unless its name is taken; whether it did.
    bool add(const Stranger &stranger)
    {
        const fs::path path = output() / stranger.name;
        if (fs::exists(fs::symlink_status(path))) {
            return false;
        }
        switch (stranger.kind) {
        case Stranger::Kind::file:
            writeFile(path, "a stranger's");
            break;
        case Stranger::Kind::folder:
            fs::create_directory(path);
            break;
        case Stranger::Kind::danglingLink:
            fs::create_symlink("nowhere", path);
            break;
        case Stranger::Kind::linkToASource:
            fs::create_symlink(m_sources.empty() ? fs::path("nowhere") : m_sources.front(), path);
            break;
        }
        return true;
    }

    Outcome write()
    {
        FaultyCalls calls;
        int ofKind = 0;
        calls.rule = [&](const FileCall &call) {
            if (call.kind != m_case.refusal.kind) {
                return 0;
            }
            const int place = ofKind++;
            const bool isRefused =
                m_case.refusal.isForGood ? place >= m_case.refusal.from : place == m_case.refusal.from;
            return isRefused ? m_case.refusal.error : 0;
        };
        const auto onPage = [this](std::int64_t pages) {
            for (const Stranger &stranger : m_case.strangers) {
                if (stranger.fromPage == pages && add(stranger)) {
                    const fs::path path = fs::canonical(output()) / stranger.name;
                    m_before.emplace(path.native(), stateOf(path));
                }
            }
            return pages != m_case.stopAtPage;
        };
        try {
            return Production::write(*m_plan, output(), {m_case.writeIndex, m_case.writeLog}, onPage, calls);
        } catch (const ProductionError &error) {
            return error;
        } catch (const FileError &error) {
            return error;
        }
    }

    /// What is told is what was made.
    void hold(const Outcome &outcome, const std::set<std::string> &made, bool hasIndex, bool hasLog) const
    {
        if (const auto *error = std::get_if<ProductionError>(&outcome)) {
            RC_ASSERT(!hasIndex);
            RC_ASSERT(!hasLog);
            if (const auto *found = std::get_if<ProductionError::Conflicts>(&error->value)) {
                RC_ASSERT(!found->conflicts.empty());
                RC_ASSERT(made.empty());
            } else {
                RC_ASSERT(namesOf(std::get<ProductionError::Cancelled>(error->value).written) == made);
            }
        } else if (const auto *result = std::get_if<ProductionResult>(&outcome)) {
            RC_ASSERT(hasIndex == m_case.writeIndex);
            RC_ASSERT(hasLog == m_case.writeLog);
            RC_ASSERT(result->index.has_value() == hasIndex);
            RC_ASSERT(result->privilegeLog.has_value() == hasLog);
            RC_ASSERT(namesOf(result->written) == made);
            RC_ASSERT(made.size() + failedCopies(*result) == m_copies.size());
            if (m_case.isQuiet()) {
                RC_ASSERT(result->failures.isEmpty());
            }
        } else {
            RC_ASSERT(!m_case.isQuiet());
        }
    }

    /// How many copies are not there; of sources of one name only one failure is told.
    [[nodiscard]] std::size_t failedCopies(const ProductionResult &result) const
    {
        const std::set<std::string> written = namesOf(result.written);
        std::size_t count = 0;
        for (const PlannedFile *file : m_plan->stampedFiles()) {
            const bool isMissing = !written.contains(file->outputName.toStdString());
            RC_ASSERT(!isMissing || result.failures.contains(file->source.name));
            count += isMissing ? 1 : 0;
        }
        return count;
    }

    /// Every name in the index is that of a whole copy with as many pages, and every copy whose source has a
    /// name of its own is in it.
    void holdIndex(const std::set<std::string> &made) const
    {
        const auto rows = rowsOf(readFile(output() / indexName));
        RC_ASSERT(rows.size() == 1 + m_plan->files.size());
        std::set<std::string> told;
        for (std::size_t index = 0; index < m_plan->files.size(); ++index) {
            const std::vector<std::string> &row = rows[index + 1];
            const PlannedFile &file = m_plan->files[index];
            RC_ASSERT(row.size() == 6U);
            RC_ASSERT(row[0] == file.source.name.toStdString());
            if (row[1].empty()) {
                RC_ASSERT(row[5] == "failed" || row[5].starts_with("skipped: "));
                RC_ASSERT(row[2].empty() && row[3].empty());
                continue;
            }
            told.insert(row[1]);
            RC_ASSERT(made.contains(row[1]));
            RC_ASSERT(row[1] == file.outputName.toStdString());
            RC_ASSERT(row[4] == std::to_string(file.pages.size()));
        }
        for (const PlannedFile *file : m_plan->stampedFiles()) {
            const auto ofName =
                std::count_if(m_plan->files.begin(), m_plan->files.end(), [file](const PlannedFile &other) {
                    return other.source.name == file->source.name;
                });
            const std::string name = file->outputName.toStdString();
            RC_ASSERT(ofName > 1 || made.contains(name) == told.contains(name));
        }
    }

    static std::set<std::string> namesOf(const std::vector<fs::path> &paths)
    {
        std::set<std::string> names;
        for (const fs::path &path : paths) {
            names.insert(path.filename());
        }
        return names;
    }

    const Case &m_case;
    TemporaryFolder m_folder;
    std::vector<fs::path> m_sources;
    std::optional<ProductionPlan> m_plan;
    std::map<std::string, std::vector<char>> m_copies; ///< As they are when nothing goes wrong.
    States m_before;
};

} // namespace

TEST(FolderProperty, WhateverBefallsAProductionItsPromisesHold)
{
    holdsAlways(
        [] {
            const auto random = *cases();
            Trial(random).run();
        },
        250);
}

} // namespace tallyfold

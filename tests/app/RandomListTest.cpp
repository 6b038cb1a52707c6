#include "tests/app/ModelFixture.h"

#include "tests/support/PdfBuilder.h"

#include <random>

namespace tallyfold {

using RandomList = tests::ModelFixture;
namespace fs = std::filesystem;

namespace {

/// The expected list: only names, with whole lists as undo steps.
struct Reference {
    std::vector<std::string> names;
    std::vector<std::vector<std::string>> undo;
    std::vector<std::vector<std::string>> redo;

    void change(const std::vector<std::string> &to)
    {
        undo.push_back(names);
        redo.clear();
        names = to;
    }

    static void step(std::vector<std::vector<std::string>> &from, std::vector<std::vector<std::string>> &to,
                     std::vector<std::string> &names)
    {
        if (!from.empty()) {
            to.push_back(names);
            names = from.back();
            from.pop_back();
        }
    }

    [[nodiscard]] std::string joined() const
    {
        std::string text;
        for (const std::string &name : names) {
            text += (text.empty() ? "" : " ") + name;
        }
        return text;
    }
};

constexpr int sequences = 200;
constexpr int stepsInSequence = 30;
constexpr int fileCount = 8;

} // namespace

/// Compares 200 random sequences of user actions with a trivially correct list.
TEST_F(RandomList, AddRemoveMoveUndoAndRedoFollowTheReference)
{
    std::vector<fs::path> files;
    for (int file = 0; file < fileCount; ++file) {
        files.push_back(folder / "sources" / (std::to_string(file) + ".pdf"));
        tests::writeFile(files.back(), "no PDF"); // Read quickly; the contents do not matter here.
    }
    StampSettings stamp = model->settings().stamp;
    stamp.order = FileOrder::manual;
    model->setStamp(stamp);
    for (unsigned seed = 1; seed <= sequences; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t limit) {
            return static_cast<std::size_t>(random() % limit);
        };
        model->removeAll();
        undo.clear();
        Reference reference;
        for (int step = 0; step < stepsInSequence; ++step) {
            const std::size_t size = reference.names.size();
            std::vector<std::string> names = reference.names;
            switch (random() % 5) {
            case 0: { // Add up to two files, perhaps known ones.
                const std::vector<fs::path> added{files[below(fileCount)], files[below(fileCount)]};
                for (const fs::path &path : added) {
                    if (std::find(names.begin(), names.end(), path.filename()) == names.end()) {
                        names.push_back(path.filename());
                    }
                }
                model->add(added);
                break;
            }
            case 1: // Remove one file.
                if (size > 0) {
                    const std::string name = names[below(size)];
                    names.erase(std::find(names.begin(), names.end(), name));
                    model->remove({idOf(name)});
                }
                break;
            case 2: // Move one row, which cannot be undone.
                if (size > 0) {
                    const std::size_t from = below(size);
                    const std::size_t to = below(size + 1);
                    const std::string name = names[from];
                    names.erase(names.begin() + static_cast<std::ptrdiff_t>(from));
                    names.insert(names.begin() + static_cast<std::ptrdiff_t>(to > from ? to - 1 : to), name);
                    reference.names = names;
                    model->move({static_cast<std::int64_t>(from)}, static_cast<std::int64_t>(to));
                }
                break;
            case 3:
                Reference::step(reference.undo, reference.redo, reference.names);
                undo.undo();
                names = reference.names;
                break;
            default:
                Reference::step(reference.redo, reference.undo, reference.names);
                undo.redo();
                names = reference.names;
                break;
            }
            if (names != reference.names) {
                reference.change(names);
            }
            ASSERT_EQ(listed(), reference.joined()) << "seed " << seed << ", step " << step;
        }
    }
}

} // namespace tallyfold

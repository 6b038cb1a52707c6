#pragma once

#include "app/AppModel.h"
#include "tests/app/FakePanels.h"
#include "tests/support/TemporaryFolder.h"

#include <QSignalSpy>
#include <QUndoStack>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tallyfold::tests {

/// Counts the signals that a model emits.
class SignalCounts {
public:
    explicit SignalCounts(AppModel &model);

    /// The number of emissions since the last call, by signal name; without signals that were not emitted.
    std::map<std::string, int> take();

private:
    std::map<std::string, std::unique_ptr<QSignalSpy>> m_spies;
};

/// A model with its own settings file, panels and undo stack.
class ModelFixture : public testing::Test {
protected:
    ModelFixture();

    /// A new model on the same settings file.
    [[nodiscard]] std::unique_ptr<AppModel> anotherModel();

    /// Creates a PDF `name` with `pages` pages in the folder of the fixture; returns its path.
    std::filesystem::path pdf(const std::string &name, int pages = 1);

    /// Creates such PDFs and adds them to the list.
    void addPdfs(const std::vector<std::string> &names, int pages = 1);

    /// The names in the list, joined by spaces.
    [[nodiscard]] std::string listed() const;

    /// The identifier of the source `name`.
    [[nodiscard]] QUuid idOf(const std::string &name) const;

    /// Processes events until `condition` holds; false on timeout.
    static bool waitUntil(const std::function<bool()> &condition);

    /// Runs a production to its end.
    void stampAndWait(bool confirmed = false);

    /// The sorted names of all files in the output folder, including hidden ones.
    [[nodiscard]] std::vector<std::string> written() const;

    TemporaryFolder folder;
    std::filesystem::path output;
    FakePanels panels;
    QUndoStack undo;
    std::unique_ptr<AppModel> model;
    std::unique_ptr<SignalCounts> counts; ///< Of `model`.
};

} // namespace tallyfold::tests

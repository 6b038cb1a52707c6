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

/// How often each signal of a model was told since the last look.
class SignalCounts {
public:
    explicit SignalCounts(AppModel &model);

    /// Signals told since the last call, by name; those not told are left out.
    std::map<std::string, int> take();

private:
    std::map<std::string, std::unique_ptr<QSignalSpy>> m_spies;
};

/// A model with a settings file, panels and an undo stack of its own.
class ModelFixture : public testing::Test {
protected:
    ModelFixture();

    /// A new model on the same settings file.
    [[nodiscard]] std::unique_ptr<AppModel> anotherModel();

    /// The path of a PDF of `pages` pages called `name` in the fixture's folder.
    std::filesystem::path pdf(const std::string &name, int pages = 1);

    /// Adds such PDFs to the list.
    void addPdfs(const std::vector<std::string> &names, int pages = 1);

    /// The names in the list, joined by spaces.
    [[nodiscard]] std::string listed() const;

    /// The identifier of the source called `name`.
    [[nodiscard]] QUuid idOf(const std::string &name) const;

    /// Lets events happen until `condition` holds; false when it does not come to hold.
    static bool waitUntil(const std::function<bool()> &condition);

    /// Runs a production to its end.
    void stampAndWait(bool confirmed = false);

    /// Names of everything in the output folder, hidden files as well, in order.
    [[nodiscard]] std::vector<std::string> written() const;

    TemporaryFolder folder;
    std::filesystem::path output;
    FakePanels panels;
    QUndoStack undo;
    std::unique_ptr<AppModel> model;
    std::unique_ptr<SignalCounts> counts; ///< Of `model`.
};

} // namespace tallyfold::tests

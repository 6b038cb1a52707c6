#pragma once

#include "app/AppModel.h"
#include "app/CurrentPlan.h"
#include "app/OutputCheck.h"
#include "ui/Desktop.h"
#include "ui/WindowState.h"
#include "ui/help/HelpRouter.h"

#include <functional>

namespace tallyfold {

/// The windows that can be opened by name.
enum class WindowId { main, help, settings, check };

/// The dependencies of every view: the model, the objects derived from it, and access to other windows and
/// the desktop. Outlives the views.
struct Environment {
    AppModel &model;
    CurrentPlan &plan;
    OutputCheck &output;
    HelpRouter &helpRouter;
    WindowState &windowState;
    Desktop &desktop;
    /// Opens a window, or brings it to the front if it is open.
    std::function<void(WindowId)> openWindow;

    /// Opens the help on `topic`.
    void openHelp(const QString &topic) const
    {
        helpRouter.setTopic(topic);
        openWindow(WindowId::help);
    }
};

} // namespace tallyfold

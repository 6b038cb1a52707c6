#include "ui/preview/SpokenPreview.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/text/SpokenStamp.h"

#include <algorithm>

namespace tallyfold {

namespace {

/// The previewed file of `plan`: the first selected one, else the first.
const PlannedFile *previewed(const ProductionPlan &plan, const QSet<QUuid> &selection)
{
    const auto selected = std::find_if(plan.files.begin(), plan.files.end(), [&](const PlannedFile &file) {
        return selection.contains(file.source.id);
    });
    if (selected != plan.files.end()) {
        return &*selected;
    }
    return plan.files.empty() ? nullptr : &plan.files.front();
}

} // namespace

SpokenPreview::SpokenPreview(const Environment &environment, QWidget &pane)
    : QObject(&pane), m_environment(environment), m_pane(&pane)
{
    const AppModel *model = &environment.model;
    connect(model, &AppModel::previewsChanged, this, &SpokenPreview::describe);
    connect(model, &AppModel::closeUpChanged, this, &SpokenPreview::describe);
    connect(model, &AppModel::previewFileNameChanged, this, &SpokenPreview::describe);
    describe();
}

void SpokenPreview::describe()
{
    const ProductionPlan &plan = *m_environment.plan;
    const PlannedFile *file = previewed(plan, m_environment.model.selection());
    const auto tell = [&](const QString &name, std::size_t page) {
        if (auto *picture = m_pane->findChild<QWidget *>(name)) {
            setAccessibleRole(*picture, QAccessible::Graphic);
            picture->setAccessibleDescription(file ? spokenStamp(*file, plan.settings, page) : QString());
        }
    };
    tell(QStringLiteral("closeUp"), 0);
    for (qsizetype page = 0; page < m_environment.model.previews().size(); ++page) {
        tell(QStringLiteral("page%1").arg(page + 1), static_cast<std::size_t>(page));
    }
}

} // namespace tallyfold

// The previews of the selected file.

#include "app/AppModel.h"

#include <algorithm>

namespace tallyfold {

const QList<QImage> &AppModel::previews() const
{
    return m_previewImages;
}

const std::optional<QImage> &AppModel::closeUp() const
{
    return m_closeUp;
}

const std::optional<QString> &AppModel::previewFileName() const
{
    return m_previewFileName;
}

bool AppModel::hasPreviewTask() const
{
    return m_previews.isRefreshing();
}

void AppModel::refreshPreviews()
{
    m_previews.refresh();
}

void AppModel::setPreviewWidth(std::int64_t pixels)
{
    const std::int64_t width = std::clamp(pixels, PreviewImages::pageWidth, PreviewImages::mostPageWidth);
    if (width != m_previewWidth) {
        m_previewWidth = width;
        refreshPreviews();
    }
}

std::optional<PreviewRequest> AppModel::previewRequest() const
{
    const ProductionPlan plan = this->plan();
    if (plan.files.empty()) {
        return std::nullopt;
    }
    const auto selected = std::find_if(plan.files.begin(), plan.files.end(), [this](const PlannedFile &file) {
        return m_selection.contains(file.source.id);
    });
    return PreviewRequest{selected == plan.files.end() ? plan.files.front() : *selected, plan.settings,
                          m_previewWidth};
}

void AppModel::showPreviews(const PreviewImages &images, const std::optional<QString> &name)
{
    assign(m_previewImages, images.pages, &AppModel::previewsChanged);
    assign(m_closeUp, images.closeUp, &AppModel::closeUpChanged);
    assign(m_previewFileName, name, &AppModel::previewFileNameChanged);
}

} // namespace tallyfold

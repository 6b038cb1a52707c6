#include "app/PreviewImages.h"

#include "app/Log.h"
#include "app/PageImage.h"
#include "core/StampError.h"
#include "core/Stamper.h"

#include <algorithm>
#include <cmath>

namespace tallyfold {

PreviewImages PreviewImages::of(const PlannedFile &file, const StampSettings &settings, std::int64_t width,
                                const std::stop_token &givenUp)
{
    PreviewImages images;
    try {
        const Stamper::Preview preview = Stamper::preview(file, settings, mostPages, width, givenUp);
        for (const pdf::Bitmap &bitmap : preview.images) {
            images.pages.append(imageOf(bitmap));
        }
        if (!images.pages.isEmpty()) {
            images.closeUp = closeUpOf(images.pages.front(), preview.firstPage.width, settings.normalized());
        }
    } catch (const StampError &error) {
        if (!error.is<StampError::Cancelled>()) {
            qCInfo(appLog) << "no preview:" << error;
        }
        return {}; // The list shows the problem of the file.
    }
    return images;
}

std::optional<QImage> closeUpOf(const QImage &page, double pageWidth, const StampSettings &settings)
{
    constexpr double lineHeight = 1.5; // In font sizes.
    constexpr double room = 14;        // Points, in addition to the lines.
    const int lines = 1 + (settings.legend.isEmpty() ? 0 : 1) + (settings.pageOfTotal ? 1 : 0);
    const double scale = page.width() / std::max(pageWidth, 1.0);
    const double wanted = scale * (settings.margin + settings.fontSize * lines * lineHeight + room);
    const int height = static_cast<int>(std::clamp(wanted, 0.0, static_cast<double>(page.height())));
    if (height < 1) {
        return std::nullopt;
    }
    QImage band =
        page.copy(0, isTop(settings.batesPosition) ? 0 : page.height() - height, page.width(), height);
    band.setDevicePixelRatio(2);
    return band;
}

} // namespace tallyfold

#pragma once

#include "core/StampSettings.h"

#include <QString>

#include <array>

namespace tallyfold {

/// What pickers call the cases of the settings.
[[nodiscard]] QString titleOf(StampPosition position);
[[nodiscard]] QString titleOf(CoverOption cover);
[[nodiscard]] QString titleOf(FileOrder order);
[[nodiscard]] QString titleOf(OutputNaming naming);

/// A font that the form offers: what is stored, and what is shown.
struct FontChoice {
    const char *name; ///< PostScript name.
    const char *title;
};

/// The fonts of the form, in their order. Their titles are names and the same in every language.
inline constexpr std::array<FontChoice, 8> fontChoices{{{"Helvetica", "Helvetica"},
                                                        {"Helvetica-Bold", "Helvetica Bold"},
                                                        {"ArialMT", "Arial"},
                                                        {"Arial-BoldMT", "Arial Bold"},
                                                        {"TimesNewRomanPSMT", "Times New Roman"},
                                                        {"TimesNewRomanPS-BoldMT", "Times New Roman Bold"},
                                                        {"Courier", "Courier"},
                                                        {"Courier-Bold", "Courier Bold"}}};

/// "18 pt (0.25 in)": points as a whole number, inches with two decimals as the user writes numbers.
[[nodiscard]] QString marginText(double points);
/// "10 pt".
[[nodiscard]] QString fontSizeText(double points);

} // namespace tallyfold

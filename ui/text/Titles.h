#pragma once

#include "core/StampSettings.h"

#include <QString>

#include <array>

namespace tallyfold {

/// The titles of the cases of the settings in pickers.
[[nodiscard]] QString titleOf(StampPosition position);
[[nodiscard]] QString titleOf(CoverOption cover);
[[nodiscard]] QString titleOf(FileOrder order);
[[nodiscard]] QString titleOf(OutputNaming naming);

/// A font in the form: its stored name and its title.
struct FontChoice {
    const char *name; ///< PostScript name.
    const char *title;
};

/// The fonts of the form, in order. Titles are proper names and not translated.
inline constexpr std::array<FontChoice, 8> fontChoices{{{"Helvetica", "Helvetica"},
                                                        {"Helvetica-Bold", "Helvetica Bold"},
                                                        {"ArialMT", "Arial"},
                                                        {"Arial-BoldMT", "Arial Bold"},
                                                        {"TimesNewRomanPSMT", "Times New Roman"},
                                                        {"TimesNewRomanPS-BoldMT", "Times New Roman Bold"},
                                                        {"Courier", "Courier"},
                                                        {"Courier-Bold", "Courier Bold"}}};

/// "18 pt (0.25 in)": points as an integer, inches with two decimals in the user's locale.
[[nodiscard]] QString marginText(double points);
/// "10 pt".
[[nodiscard]] QString fontSizeText(double points);

} // namespace tallyfold

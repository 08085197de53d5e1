#pragma once

#include <QColor>
#include <QFont>

/// Every colour, radius and type size of the island, named once.
///
/// Lengths are logical points, font sizes pixels of that size.
namespace tirlo::Style {

// Surfaces.
inline constexpr QColor island{0x00, 0x00, 0x00};
inline constexpr QColor card{0x14, 0x15, 0x18};
inline constexpr QColor pill{0x0E, 0x0F, 0x11};
inline constexpr QColor badgeRing{0x0B, 0x0C, 0x0E};

inline constexpr QColor selectedTab{0x1D, 0x1F, 0x23};

// Text, from strong to faint.
inline constexpr QColor primaryText{0xF5, 0xF6, 0xF8};
inline constexpr QColor liveText{0xF2, 0xF3, 0xF5};
inline constexpr QColor secondaryButtonText{0xF1, 0xF2, 0xF4};
inline constexpr QColor codeText{0xE8, 0xE9, 0xEC};
inline constexpr QColor hoveredText{0xB0, 0xB5, 0xBE};
inline constexpr QColor explanationText{0x93, 0x98, 0xA1};
inline constexpr QColor secondaryText{0x8E, 0x93, 0x9C};
inline constexpr QColor shimmerText{0x7C, 0x81, 0x8A};
inline constexpr QColor faintText{0x6B, 0x70, 0x79};
inline constexpr QColor targetMark{0x5F, 0x64, 0x6D};
inline constexpr QColor spentMark{0x45, 0x48, 0x50};
inline constexpr QColor failureText{0xFF, 0x8D, 0x97};
inline constexpr QColor link{0x8A, 0xB4, 0xF8};
inline constexpr QColor onLight{0x0B, 0x0C, 0x0E};

// Signals.
inline constexpr QColor white{0xFF, 0xFF, 0xFF};
inline constexpr QColor success{0x22, 0xC5, 0x5E};
inline constexpr QColor failure{0xF4, 0x50, 0x5E};
inline constexpr QColor waiting{0xF5, 0xA5, 0x24};
inline constexpr QColor focusRing{0x3B, 0x9E, 0xFF};

// Opacities of white laid over a surface.
inline constexpr double hairlineOpacity = 0.035;
inline constexpr double strokeOpacity = 0.06;
inline constexpr double raisedOpacity = 0.07;
inline constexpr double hoveredOpacity = 0.12;
inline constexpr double pressedOpacity = 0.04;

// Radii.
inline constexpr double cardRadius = 12;
inline constexpr double buttonRadius = 8;
inline constexpr double codeRadius = 6;
inline constexpr double keyHintRadius = 4;

// Widths of outlines.
inline constexpr double hairlineWidth = 1;
inline constexpr double focusRingWidth = 2;

// Type sizes.
inline constexpr double titleSize = 15;
inline constexpr double bodySize = 13;
inline constexpr double buttonSize = 12.5;
inline constexpr double headSize = 12;
inline constexpr double codeSize = 11.5;
inline constexpr double captionSize = 11;
inline constexpr double keyHintSize = 10.5;
inline constexpr double pillSize = 10;

// Controls.
inline constexpr int lineHeight = 16;
inline constexpr int dotDiameter = 7;
inline constexpr int codeHeight = 23;
inline constexpr int codePadding = 8;
inline constexpr int buttonHeight = 29;
inline constexpr int buttonPadding = 13;
inline constexpr int controlSpacing = 8;
inline constexpr int headSpacing = 6;

/// The interface's face at a size in pixels: Inter, else the desktop's own.
[[nodiscard]] QFont font(double size, QFont::Weight weight = QFont::Normal);

/// The desktop's monospaced face at a size in pixels.
[[nodiscard]] QFont codeFont(double size);

} // namespace tirlo::Style

// SPDX-FileCopyrightText: Aerolith developers
// Constants that every layer shares, under the names that the files, the documents and the code
// use.
#pragma once

#include <QPointF>
#include <QRgb>
#include <QString>

inline constexpr int W_res = 1024; ///< Width of the editor's minimum size hint, pixels.
inline constexpr int H_res = 768;  ///< Height of the editor's minimum size hint, pixels.
inline constexpr int MAX_X = 1000; ///< Shared extent in x.
inline constexpr int MAX_Y = 1000; ///< Shared extent in y.

/// Points of a resampled outline; the shape analysis works on indices 0..999.
inline constexpr int N_airfoil = 1000;

/// Pi to nine decimals. Coefficients and rotation steps are computed from this
/// value, so a "better" one would change saved numbers.
inline constexpr double Pi = 3.141592653;
inline constexpr double TwoPi = 6.283185306; ///< 2 * Pi.

inline constexpr double DELTA_X = 40.0; ///< Left margin of the NearPoint mapping, pixels.
inline constexpr int MAXNUMPOINTS = 30; ///< Capacity of the control-point arrays.
inline constexpr int MAXNUMKNOTS = 300; ///< Capacity of the knot arrays.
inline constexpr int DEGREE3 = 3;       ///< Degree of the Bernstein helpers.
inline constexpr int DEGREE2 = 2;       ///< Degree of the edited B-spline.
inline constexpr double F_DIV = 1000.0; ///< Divisions of the unit interval when sampling.

// RGB_MASK (0xFFFFFF), the mask of the colour bits, is Qt's own
// constant of that name and value, from <QRgb>.

/// Folder of airfoil files below the user's desktop folder.
inline const QString airfoilDir = QStringLiteral("/Kavrund/Airfoils/");

inline constexpr QPointF null = QPointF(0.0, 0.0); ///< The origin.

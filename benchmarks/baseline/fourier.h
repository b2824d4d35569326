// SPDX-FileCopyrightText: Aerolith developers
// The Fourier fit and its evaluation by direct sums.
#pragma once

namespace baseline {

/// Fits order @p N to the 2N samples @p y and evaluates the series at the 1000 angles concentrated
/// at the nose, with a sine and a cosine for every term of every sum.
/// @param N   order, at least 1
/// @param out receives 1000 values
void Fourier_Proc(int N, const double* y, double* out);

} // namespace baseline

// SPDX-FileCopyrightText: Aerolith developers
// Numbers as the writers put them into files.
#pragma once

#include <QByteArray>

namespace drawings {

/// @p value with a decimal point and at most @p decimals digits behind it, without trailing
/// zeros and without a negative zero, in every locale.
/// @param value finite
inline QByteArray decimal(double value, int decimals) {
    QByteArray digits = QByteArray::number(value, 'f', decimals);
    if (digits.contains('.')) {
        while (digits.endsWith('0'))
            digits.chop(1);
        if (digits.endsWith('.'))
            digits.chop(1);
    }
    return digits == "-0" ? QByteArray("0") : digits;
}

} // namespace drawings

// SPDX-FileCopyrightText: Aerolith developers
// A program that uses only the cores: it links without the widgets library.
#include "airfoil/airfoil.h"
#include "document/savefile.h"
#include "numerics/fourier.h"

int main() {
    const QPolygonF outline = {{1.0, 0.0}, {0.0, 0.1}, {1.0, 0.0}};
    const bool listed = airfoil_table(QString(), Natur_Airfoil(9, outline), 1).size() > 9;
    const bool fitted = FourierInterpolationAirfoil(outline).size() == N_airfoil;
    GetDataStruct()->spline.init_knots();
    return listed && fitted && !write_file(QString(), QByteArray()) ? 0 : 1;
}

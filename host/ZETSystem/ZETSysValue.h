#pragma once

#include <ZETHostGlobal.h>

/*! Conversion of values between the internal units and those that people see. */
class ZETHOST_EXPORT ZETSysValue
{
public:
    enum Unit : int {
        UnitDegree = 1280 //!< an angle in degrees; internally angles are radians
    };

    /*! \a value, given in the internal unit, in \a unit. */
    static double ConvertFromSystemUnit(double value, Unit unit);
};

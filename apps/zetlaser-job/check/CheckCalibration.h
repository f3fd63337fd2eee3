#pragma once

#include <QString>

/*! The calibration file that Virtek and LAP have beside the part file. LAP names its targets by numbers. */
inline const QString calibrationType = QStringLiteral("calibration");

/*! The part file's path with "cal" in the place of its last three characters, whatever they are. */
QString GetCalibrationPath(const QString& path);

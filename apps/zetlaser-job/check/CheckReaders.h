#pragma once

#include "CheckFormat.h"

#include <vector>

/*! One function for each family of formats, which returns its rows of CheckFormats: the part file first, then what
 *  stands beside it. Each family is a file of its own, CheckReaderVirtek.cpp and so on. */
namespace CheckReaders
{
std::vector<CheckFormat> GetVirtek();
std::vector<CheckFormat> GetLpt(); //!< and FARO
std::vector<CheckFormat> GetLap();
std::vector<CheckFormat> GetSl();
std::vector<CheckFormat> GetAssemblyGuidance(); //!< and Aligned Vision
std::vector<CheckFormat> GetNLines();           //!< General Scanning and Quilmon
std::vector<CheckFormat> GetApt();              //!< all three
std::vector<CheckFormat> GetDxf();
std::vector<CheckFormat> GetCalibration(); //!< beside Virtek and LAP
} // namespace CheckReaders

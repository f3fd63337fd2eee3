#pragma once

#include <QVariant>

class JobSettings;
class QString;
class ZETCompRoot;
class ZETCompRosette;
class ZETLaserOptions;
struct JobSetting;

/*! Fills the record of a job from the model and the settings: what the configuration decides, then what the settings
 *  say instead, then the selection of plies, projectors and axis system. Names are looked up in the model; an unknown
 *  one is a JobError that tells the nearest.
 *
 *  The file name is left to whoever writes. */
void FillOptions(ZETLaserOptions& options, ZETCompRoot& root, const JobSettings& settings);

/*! The value of \a setting that a job runs with, in the form that the setting has in JobSettings: what the record of a
 *  filled job says, also where that is a default. Lists hold the names of all that is selected, plies with layup and
 *  sequence. Invalid or empty for nothing. */
QVariant GetValueInForce(const JobSetting& setting, const JobSettings& settings, const ZETLaserOptions& options);

/*! The rosette that names an axis system. Throws JobError that tells the nearest, if there is none. */
ZETCompRosette* FindRosette(const ZETCompRoot& root, const QString& name);

#pragma once

class JobSettings;
class ZETCompRoot;
class ZETLaserOptions;

/*! Fills the record of a job from the model and the settings: what the configuration decides, then what the settings
 *  say instead, then the selection of plies, projectors and axis system. Names are looked up in the model; an unknown
 *  one is a JobError that tells the nearest.
 *
 *  The file name is left to whoever writes. */
void FillOptions(ZETLaserOptions& options, ZETCompRoot& root, const JobSettings& settings);

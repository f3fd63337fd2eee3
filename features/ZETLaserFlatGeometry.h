#pragma once

class ZETCompFlatPattern;
class ZETMathPoint;

// What flat patterns are asked by reader and writers alike. It stands among the features, because it knows the host's
// model and nothing of the laser tree, and because both may include from here while neither may from the other.

/*! The seed point of the pattern's strategy, as it lies in the flat pattern: the first flat point of the pattern whose
 *  source is that seed point. A strategy without a seed point matches a flat point without a source. False, and \a
 *  point stays as it was, if there is none or if it has no vertex. \a flatPattern may be null. */
bool GetFlattenedSeedPoint(ZETCompFlatPattern* flatPattern, ZETMathPoint& point);

#include "openhost/layup/ZETOpenLayupFile.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
QStringList Keys(const char* blankSeparated)
{
    return QString::fromLatin1(blankSeparated).split(u' ', Qt::SkipEmptyParts);
}
} // namespace

// A key stands here and in schema/layup.schema.json; a test compares the two.
const QMap<QString, QStringList>& ZETOpenLayupFile::GetKnownKeys()
{
    static const QMap<QString, QStringList> keys{
        {u"file"_s, Keys("$schema format version units name parameters projectionLimit shapes surfaces curves points "
                         "axisSystems planes rosettes materials configurations targets projectors layups")},
        // Geometry
        {u"shape"_s, Keys("name file scale")},
        {u"surface"_s, Keys("name shape face plane cylinder cone sphere bspline reversed")},
        {u"planeSurface"_s, Keys("origin x y width height")},
        {u"cylinderSurface"_s, Keys("origin axis x radius startAngle angle height")},
        {u"coneSurface"_s, Keys("origin axis x radius halfAngle startAngle angle length")},
        {u"sphereSurface"_s, Keys("origin axis x radius longitude latitude")},
        {u"bsplineSurface"_s, Keys("points")},
        {u"curve"_s, Keys("kind name enabled on limit points closed smooth edges line circle shape edge wire")},
        {u"edge"_s, Keys("points smooth reversed")},
        {u"line"_s, Keys("from to")},
        {u"circle"_s, Keys("center axis x radius corners")},
        {u"point"_s, Keys("kind name enabled at on limit")},
        {u"axisSystem"_s, Keys("name origin x y")},
        // Materials, configurations, shop floor
        {u"material"_s, Keys("name type id thickness packagings")},
        {u"packaging"_s, Keys("name width length")},
        {u"configuration"_s,
         Keys("name active use3D includeNormals skipParentPly seedPoint seedCurve laserExtraGeometry "
              "nestingExtraGeometry nestingRosette laserRosetteSize nestingRosetteSize")},
        {u"target"_s, Keys("name at point drift comment enabled")},
        {u"projector"_s, Keys("name targets comment enabled")},
        // Layups
        {u"layup"_s, Keys("kind name enabled direction workpiece rosette flatteningPlane flatteningMode children")},
        {u"sequence"_s, Keys("kind name enabled children")},
        {u"ply"_s, Keys("kind name enabled direction material materials boundary boundaries updatedBoundaries "
                        "surfaceUpdate flatPattern children")},
        {u"boundary"_s, Keys("points closed smooth on limit curve")},
        {u"strategy"_s, Keys("kind name enabled configurations seedPoint seedCurve finalSeedPoint finalSeedCurve "
                             "packaging flatPattern")},
        {u"subdivision"_s, Keys("kind name enabled configurations children")},
        {u"subPly"_s, Keys("kind name enabled boundary boundaries updatedBoundaries flatPattern children")},
        {u"flatPattern"_s, Keys("name contours curves points folders")},
        {u"flatCurve"_s, Keys("name points closed source")},
        {u"flatPoint"_s, Keys("name at source")},
        // Extra geometry
        {u"extraGeometry"_s, Keys("kind name enabled scope outputs children")},
        {u"folder"_s, Keys("kind name enabled children")},
        {u"parameter"_s, Keys("kind name enabled type text")},
        {u"text"_s, Keys("kind name enabled text size axis anchor support along verticalMirror horizontalMirror")},
    };
    return keys;
}

#pragma once

#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETVisualization/ZETOpenView.h"

#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QStringList>

class ZETVisEnvironment;

/*! What a picture of a scene shows beside the scene's own objects. */
struct ZETOpenPicture {
    ZETOpenView::Side side = ZETOpenView::Top;
    QSize size = QSize(1600, 1000); //!< in pixels
    QString title;                  //!< may be empty
    QStringList captions;           //!< lines beneath the title
    double lineScale = 1.0;         //!< by which line widths and markers are multiplied
    QList<ZETOpenTriangles> surfaces;
};

/*! Draws the visible objects of a scene, as their options say: what has the higher priority is drawn later. Surfaces
 *  are shaded and lie behind all objects, whatever IsDepthEnabled says of these. A marker of the target kind has the
 *  label of its object beside it. A bar tells the scale. The picture holds all surfaces and all visible objects, as
 *  large as its size allows: it is turned clockwise by a quarter where that shows them larger. */
namespace ZETOpenScenePainter
{
/*! Needs a QGuiApplication, for the texts. */
ZETHOST_EXPORT QImage PaintImage(const ZETVisEnvironment& scene, const ZETOpenPicture& picture);

/*! The same as a document of its own. Each object is a group with class "object" and the attribute data-label, each
 *  polyline a path with one L for each segment, each marker an element with class "dot" or "target". */
ZETHOST_EXPORT QByteArray WriteSvg(const ZETVisEnvironment& scene, const ZETOpenPicture& picture);

/*! What a scene holds: what a picture or a page of it has to show. */
struct Content {
    qint64 segments = 0;
    qint64 markers = 0;

    friend bool operator==(const Content&, const Content&) = default;
};
/*! The content of the visible objects. */
ZETHOST_EXPORT Content Count(const ZETVisEnvironment& scene);
} // namespace ZETOpenScenePainter

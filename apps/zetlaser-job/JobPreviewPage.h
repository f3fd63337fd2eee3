#pragma once

#include "openhost/ZETVisualization/ZETOpenView.h"

#include <QByteArray>
#include <QString>

class JobPreviewScene;

/*! The page for the browser: one file that needs no other, and no network. */
namespace JobPreviewPage
{
/*! The scripts of the 3D library three.js and its licence, ready to be written into a page. \a folder is laid out as
 *  that of Debian's package libjs-three. Throws JobError, which names the package, if they aren't all there. */
struct Library {
    explicit Library(const QString& folder);

    QByteArray scripts; //!< script elements
    QByteArray licence; //!< escaped

    /*! Where Debian's package puts it. */
    static QString GetDefaultFolder();
};

/*! The page of all plies of \a scene, whose eye begins at \a side. */
QByteArray Write(JobPreviewScene& scene, const QString& partName, ZETOpenView::Side side, const Library& library);
} // namespace JobPreviewPage

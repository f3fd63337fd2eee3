#pragma once

#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETVisualization/ZETOpenView.h"

#include "laser/ZETLaserOptions.h"

#include <ZETFeature/ZETFeatEnvironment.h>

#include <QList>
#include <QMap>
#include <QString>

class ZETFeatObject;
class ZETVisVirtualObject;

/*! A ply or sub-ply of the preview. Strings may be empty where the model says nothing. */
struct JobPreviewPly {
    QString layup;
    QString sequence;
    QString name; //!< of a sub-ply with its ply: "P3 / P3a"
    QString material;
    QString materialDetails; //!< "Fabric, G-300, 0.3 mm"
    double direction = 0.0;  //!< in degrees
    QMap<ZETLaserOptions::ELaserSourceType, ZETVisVirtualObject*> objects;

    /*! "P1, Glass, 45°" */
    QString Describe() const;
    void SetVisible(bool isVisible) const;
};

/*! The scene of a job: the display objects of the laser data, named and made visible, those of the targets, and the
 *  tool beneath. Needs a job whose data is read and thinned. */
class JobPreviewScene
{
public:
    /*! Fills the scene. \a options must outlive this object, which is its scene from now on. */
    explicit JobPreviewScene(ZETLaserOptions& options);

    ZETFeatEnvironment& GetScene() { return scene; }
    /*! In the order of laying. */
    const QList<JobPreviewPly>& GetPlies() const { return plies; }
    /*! The display objects of the targets of all selected projectors; they are named after them. */
    const QList<ZETVisVirtualObject*>& GetTargets() const { return targets; }
    /*! The tool; none for flat output, which doesn't lie on it. */
    const QList<ZETOpenTriangles>& GetSurfaces() const { return surfaces; }
    /*! The side that the plies are laid from. */
    ZETOpenView::Side GetLayingSide() const;

    /*! "boundary", "normals" and so on. */
    static QString GetTypeName(ZETLaserOptions::ELaserSourceType type);

private:
    void AddPlies();
    void AddTargets();
    void AddSurfaces();

    ZETLaserOptions& options;
    ZETFeatEnvironment scene;
    QList<JobPreviewPly> plies;
    QList<const ZETFeatObject*> features; //!< of the plies
    QList<ZETVisVirtualObject*> targets;
    QList<ZETOpenTriangles> surfaces;
    bool isLaidFromNormal = true;
};

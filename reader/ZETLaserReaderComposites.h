#pragma once

#include "reader/ZETLaserReader.h"

#include <ZETGeometry/ZETGeoLocationOnSurface.h>
#include <ZETMathematics/ZETMathVector.h>

#include <QCoreApplication>
#include <QList>
#include <QPointer>
#include <QSet>
#include <QString>

#include <memory>
#include <vector>

class ZETCompFlatPattern;
class ZETCompLayup;
class ZETCompPly;
class ZETCompPlyBase;
class ZETCompRoot;
class ZETCompSequence;
class ZETCompStrategy;
class ZETCompSubdivision;
class ZETCompSubPly;
class ZETCompThicknessAnalyzer;
class ZETFeatGeometry;
class ZETFeatObject;
class ZETGeoComboCurve;
class ZETGeoCurveOnSurface;
class ZETGeoSurface;
class ZETLaserContour;
class ZETLaserCurve;
class ZETLaserExtraGeometry;
class ZETMatMaterial;
class ZETMathAxis;
class ZETMathPoint;
class ZETTopNet;

/*! Reads a composite model. Each layup with a selected ply, and each of its sequences if plies are nested within
 *  sequences, gets a group; each selected ply and sub-ply gets a group with one contour and the entities of its extra
 *  geometry. A sub-ply's group stands beside that of its ply, not within it.
 *
 *  The tree's shape is the same for every output type: only the curves in a ply's contour differ. Coordinates are mm,
 *  in the model's frame or, for flat output, in that of the flattening plane; neither units nor an output axis are
 *  applied. Selection is membership in the options' plies and nothing else: enabled states were settled there.
 *
 *  What is wrong with a ply goes to the message queue as a warning, and the read goes on; a structural fault of seed
 *  geometry is thrown as ZETSysException and ends it, and what was read until then stays in the tree.
 *
 *  Plain pointers into the model are held between reads, but looked at only during one.
 *
 *  ZETLaserReaderTraversal.cpp holds the walk, ZETLaserReaderBoundary.cpp a ply's parts, their order, its boundaries
 *  and flat curves, ZETLaserReaderRosette.cpp the ply direction, the flat frame and the rosettes,
 *  ZETLaserReaderSeed.cpp the seed geometry, ZETLaserReaderExtraGeometry.cpp the extra geometry. */
class ZETLaserReaderComposites final : public ZETLaserReader
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserReaderComposites)

public:
    /*! \a jobMaterials is the job's list of materials, not owned: each ply's own material is appended to it, once. */
    ZETLaserReaderComposites(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> rootGroup,
                             QList<ZETMatMaterial*>* jobMaterials);
    ~ZETLaserReaderComposites();

    bool Read() override;

private:
    Q_DISABLE_COPY_MOVE(ZETLaserReaderComposites)
    friend class TestReaderBoundary; // the form of the offset boundary that nothing asks for yet
    friend class TestReaderRosette;  // the message about a sub-ply without a ply, which no walk comes to
    friend class TestReaderSeed;     // a flat pattern without a strategy, and the surface of a finished ply: the same

    using ExtraGeometries = QList<ZETLaserExtraGeometry*>;
    using ExtraSlot = QPointer<ZETLaserExtraGeometry>;

    // ---- The walk ----

    void ReadLayup(ZETCompLayup* layup, QSharedPointer<ZETLaserGroup> group);
    void ReadSequence(ZETCompSequence* sequence, QSharedPointer<ZETLaserGroup> group);
    void ReadPly(ZETCompPly* ply, QSharedPointer<ZETLaserGroup> group);
    void ReadSubdivision(ZETCompSubdivision* subdivision, QSharedPointer<ZETLaserGroup> group,
                         ZETMatMaterial* material);
    void ReadSubPly(ZETCompSubPly* subPly, QSharedPointer<ZETLaserGroup> group, ZETMatMaterial* material);

    /*! Looks through the whole model once: who is selected, which nodes hold a selected ply, and which extra geometry
     *  goes to all plies. */
    void LookThrough(const ZETCompRoot& model);
    bool IsSelected(const ZETCompPlyBase* ply) const { return selectedPlies.contains(ply); }
    /*! The extra geometry that applies to a ply, or to a sub-ply, in the order in which it is read. Nothing is taken
     *  out that stands there twice. */
    ExtraGeometries GetPlyExtra() const;
    ExtraGeometries GetSubPlyExtra() const;

    // ---- One ply ----

    /*! Fills the group of one ply or sub-ply. */
    void ReadPlyGeometry(QSharedPointer<ZETLaserGroup> group, ZETCompPlyBase* ply, const ExtraGeometries& extra);
    void ReadPly3D(QSharedPointer<ZETLaserGroup> group, QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply,
                   const ExtraGeometries& extra);
    void ReadPlyFlat(QSharedPointer<ZETLaserGroup> group, QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply,
                     const ExtraGeometries& extra);
    /*! Reads the features of the list whose filters name the present output type. */
    void ReadFilteredExtra(const ExtraGeometries& extra, QSharedPointer<ZETLaserGroup> group);

    // ---- Boundaries and flat curves ----

    void ReadBoundaries(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply);
    void ReadBoundaryCurve(QSharedPointer<ZETLaserContour> contour, const QString& label, const int& number,
                           const ZETGeoCurveOnSurface* curve);
    /*! With \a applyThickness each point is lifted along its normal by what lies beneath. */
    void ReadOffsetBoundaryCurve(ZETCompPlyBase* ply, QSharedPointer<ZETLaserContour> contour, const QString& label,
                                 const int& number, const ZETGeoCurveOnSurface* curve, bool applyThickness);
    void ReadFlatContours(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply, ZETCompFlatPattern* flatPattern,
                          const ZETMathAxis& axis);
    /*! A curve for each net of the geometry's body. The curves are named \a pattern of \a first and \a second; an empty
     *  \a second is set to the number of the first net. \a axis takes the points to the frame of the result. */
    void ReadFlatCurves(QSharedPointer<ZETLaserContour> contour, ZETFeatGeometry* geometry, const QString& pattern,
                        const QString& first, QString& second, const ZETMathAxis& axis);

    void ReadNetPoints(ZETLaserCurve& target, const ZETTopNet& net, const ZETMathAxis& axis) const;
    /*! Appends the points of one edge, in its own order; \a last is the end of the edge before, and becomes its own. */
    void AppendEdge(std::vector<ZETMathPoint>& points, const ZETGeoComboCurve& edge, ZETMathPoint& last) const;

    /*! Where a curve on a surface is to be sampled, handed on one by one, in order of travel. */
    template <typename Visit>
    void WalkCurve(const ZETGeoCurveOnSurface& curve, Visit visit) const;
    void ReadSurfacePoints(ZETLaserCurve& target, const ZETGeoCurveOnSurface& curve) const;
    /*! How many equal parts no longer than the maximum length \a length is cut into; 0 if it isn't cut. */
    int GetPartCount(double length) const;
    /*! How many points WalkCurve hands on. */
    qsizetype CountPoints(const ZETGeoCurveOnSurface& curve) const;
    /*! The unit normal of the surface, on the side that the layup is laid from. */
    ZETMathVector GetSignedNormal(const ZETGeoSurface& surface, const ZETGeoLocationOnSurface& location) const;

    // ---- Ply direction and rosette ----

    /*! The frame that flat geometry of \a ply is laid down in: with `axis / p` its flattened seed point comes to lie on
     *  the origin of the flattening plane. */
    ZETMathAxis ComputeFlatAxis(ZETCompPlyBase* ply);
    void ReadRosette(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply);
    void ReadSeedFormRosette(ZETLaserCurve& rosette, const ZETMathAxis& axis, double direction,
                             const ZETGeoLocationOnSurface& location);
    void ReadAxisFormRosette(ZETLaserCurve& rosette, ZETMathAxis axis, double direction, ZETCompPly* ply);
    void ReadFlatRosette(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply, ZETCompFlatPattern* flatPattern,
                         const ZETMathAxis& axis);
    QSharedPointer<ZETLaserCurve> AddRosetteCurve(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply);
    /*! The workpiece's normal about its middle, on the side that the layup is laid from, of any length; (0, 0, 1)
     *  without a workpiece. */
    ZETMathVector GetWorkpieceNormal(ZETCompPly* ply);

    // ---- Seed geometry ----

    void ReadSeedCurve(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply);
    void ReadFlatSeedCurve(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply,
                           ZETCompFlatPattern* flatPattern, const ZETMathAxis& axis);
    /*! The strategy of \a ply in the active configuration; null if it has none or a subdivision. */
    ZETCompStrategy* GetActiveStrategy(const ZETCompPlyBase& ply) const;
    ZETGeoLocationOnSurface GetSeedLocation(ZETCompStrategy* strategy);
    /*! The seed curve as one curve on the surface; may be null. A curve that nobody holds yet is the caller's: it goes
     *  with the last reference. */
    const ZETGeoCurveOnSurface* GetSeedCurveOnSurface(ZETCompStrategy* strategy);
    const ZETGeoSurface* GetStrategySurface(ZETCompStrategy* strategy);

    // ---- Extra geometry ----

    void ReadExtraGeometry(ZETLaserExtraGeometry* feature, QSharedPointer<ZETLaserGroup> group);
    /*! A contour with the curves of one geometry, in model coordinates whatever the output type. */
    void ReadExtraCurves(QSharedPointer<ZETLaserGroup> group, ZETFeatGeometry* geometry, const QString& label);

    // ---- Memory of the walk ----

    bool layupDirection = true;
    QList<ZETMatMaterial*>* materials;

    // The extra geometry that was met at the open node of each level. The lists and slots of a level are reset when the
    // next node of that level is opened, and carry over from one node below it to the next.
    ExtraGeometries allPlies;
    ExtraGeometries rootPliesBelow;
    ExtraGeometries layupPliesBelow;
    ExtraGeometries sequencePliesBelow;
    ExtraGeometries plyPliesBelow;
    ExtraGeometries subdivisionPliesBelow;
    ExtraSlot rootUntilNext;
    ExtraSlot layupUntilNext;
    ExtraSlot sequenceUntilNext;
    ExtraSlot plyUntilNext;
    ExtraSlot subdivisionUntilNext;
    ExtraSlot subPlyUntilNext;
    ExtraGeometries layupParentOnly;
    ExtraGeometries sequenceParentOnly;
    ExtraGeometries plyParentOnly;
    ExtraGeometries subdivisionParentOnly;
    ExtraGeometries subPlyParentOnly;

    std::unique_ptr<ZETCompThicknessAnalyzer> thicknessAnalyzer;

    QSet<const ZETCompPlyBase*> selectedPlies;         //!< of the options, as they stand when a read begins
    QSet<const ZETFeatObject*> nodesWithSelectedPlies; //!< all ancestors of the selected plies
};

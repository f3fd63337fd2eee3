#pragma once

#include <ZETFeature/ZETFeatObject.h>
#include <ZETMathematics/ZETMathPlane.h>

class ZETCompLayupPrivate;
class ZETCompRosette;
class ZETCompSequence;
class ZETFeatGeometry;
class ZETWFPlane;

/*! A layup: sequences of plies on one workpiece, laid from one side. */
class ZETHOST_EXPORT ZETCompLayup : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Layup")
    Q_CLASSINFO("allowedParents", "ZETCompRoot")

public:
    explicit ZETCompLayup(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompLayup(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompLayup() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    enum FlatteningMode : int {
        FlatteningUnturned = 0,   //!< flat patterns lie as they were made
        FlatteningByDirection = 1 //!< flat output is turned by the ply direction
    };
    Q_ENUM(FlatteningMode)

    /*! The sequences, in order. */
    QList<ZETCompSequence*> GetSequences() const;
    /*! False for a layup that is laid from the other side of the workpiece: it reverses the normals of the laser data
     *  and the sign of the ply directions in the flat. DEFAULT: true */
    bool GetLayupDirection() const;
    /*! The surface that the plies are laid on; may be null. */
    ZETFeatGeometry* GetWorkpiece() const;
    /*! The axis system that ply directions count from; may be null. */
    ZETCompRosette* GetRosette() const;
    /*! The plane that flat output is laid on; may be null. */
    ZETWFPlane* GetFlatteningPlane() const;
    /*! The plane of that feature; the XY plane at the origin without one. */
    ZETMathPlane GetFlatteningPlaneResult() const;
    /*! DEFAULT: FlatteningUnturned */
    FlatteningMode GetFlatteningMode() const;

private:
    friend class ZETCompLayupPrivate;
    std::unique_ptr<ZETCompLayupPrivate> d;
};

#pragma once

#include "laser/ZETLaserOptions.h"

#include <QList>
#include <QMap>
#include <QPointer>
#include <QSharedPointer>

#include <memory>

class ZETFeatObject;
class ZETLaserCurve;
class ZETLaserEntity;
class ZETLaserGroup;
class ZETLaserParameterProvider;
class ZETLaserTextEntity;
class ZETVisRep;
class ZETVisVirtualObject;

/*! Turns a laser tree into display objects for the scene of the options: one for each ply or sub-ply and each source
 *  type of what it holds, however many curves that is. They are born hidden; whoever fetches them shows what it wants.
 *
 *  Options aren't owned, the tree is shared. What is made here belongs to the visualization library once it was handed
 *  over, and is never deleted here: primitives to their representation, representations to their set, the set to its
 *  object, objects to the scene. Without a scene nobody takes the objects over. */
class ZETLaserRenderer final
{
public:
    /*! Display objects by the ply or sub-ply that they show and by where their content came from. */
    using VisObjects = QMap<QPointer<ZETFeatObject>, QMap<ZETLaserOptions::ELaserSourceType, ZETVisVirtualObject*>>;

    ZETLaserRenderer(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);
    ~ZETLaserRenderer();

    /*! Makes the display objects of the tree as it is now. Always true. Doesn't erase: an object made earlier for the
     *  same ply and source type leaves the map and stays in the scene, where no later Erase reaches it. */
    virtual bool Render();
    VisObjects GetVisObjects() const { return visObjects; }
    /*! Takes all display objects out of the scene, which deletes them. Copies of the map must not be used behind it. */
    void Erase();

private:
    Q_DISABLE_COPY_MOVE(ZETLaserRenderer)

    using Reps = QList<ZETVisRep*>;

    /*! Collects the representations of everything below \a group. */
    void CollectGroup(QSharedPointer<ZETLaserGroup> group);
    void RenderCurve(QSharedPointer<ZETLaserCurve> curve);
    /*! The macros of the text are evaluated for the ply of \a group. */
    void RenderText(QSharedPointer<ZETLaserTextEntity> entity, QSharedPointer<ZETLaserGroup> group);
    /*! The nearest group of a ply or sub-ply, \a entity itself included; null if there is none. */
    static ZETLaserGroup* FindOwnerGroup(const QPointer<ZETLaserEntity>& entity);
    void AddRepresentations(const QPointer<ZETLaserGroup>& group, int type, const Reps& reps);
    /*! Makes the display objects of one group out of its representations, by source type. */
    void AddVisObjects(ZETFeatObject* feature, const QMap<int, Reps>& repsByType);

    ZETLaserOptions* options;
    std::unique_ptr<ZETLaserParameterProvider> parameterProvider;
    QSharedPointer<ZETLaserGroup> root;
    QMap<QPointer<ZETLaserGroup>, QMap<int, Reps>> workingMap; //!< of the layup in hand, by owner and source type
    VisObjects visObjects;
};

#pragma once

#include "laser/ZETLaserEntity.h"

#include <QList>

class ZETLaserContour;
class ZETLaserParameterEntity;
class ZETLaserTextEntity;

/*! A node of the tree: either of groups or of leaves (contours, texts, parameters), never of both. The first child
 *  decides; what would mix them is refused without a word. */
class ZETLaserGroup : public ZETLaserEntity
{
    Q_OBJECT

public:
    explicit ZETLaserGroup(QSharedPointer<QObject> parent);
    ~ZETLaserGroup() override;

    /*! Appends \a group if all children are groups. */
    void AddGroup(QSharedPointer<ZETLaserGroup> group);
    /*! Append a leaf if all children are leaves. */
    void AddContour(QSharedPointer<ZETLaserContour> contour);
    void AddTextEntity(QSharedPointer<ZETLaserTextEntity> text);
    void AddParameterEntity(QSharedPointer<ZETLaserParameterEntity> parameter);

    /*! A shallow copy of the list, for iteration. Walk it with ChildrenOf (laser/ZETLaserChildren.h). */
    QList<QSharedPointer<ZETLaserEntity>> GetChildren() const { return children; }
    /*! Removes all children; a copy of the list that somebody holds stays intact. */
    void Clear();

    /*! Whether any child is a group: tells a node of groups from a node of leaves. */
    bool HasGroups() const;
    /*! The points of all contours below, and 1 for each parameter. Texts don't count: a group of texts alone counts as
     *  empty. */
    int GetPointCount() const;

    void MinimizePoints(double tolerance, double maxLength) override;
    void Transform(const ZETMathAxis& axis) override;

private:
    void AddLeaf(QSharedPointer<ZETLaserEntity> leaf);

    QList<QSharedPointer<ZETLaserEntity>> children;
    // What a scan of the children would find. The list grows at its end only, so the answers can be kept up to date.
    bool onlyGroups = true;
    bool onlyLeaves = true;
    bool anyGroup = false;
};

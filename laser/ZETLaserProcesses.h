#pragma once

#include "laser/ZETLaserGlobal.h"
#include "laser/ZETLaserOptions.h"

#include <ZETMathematics/ZETMathBoundingBox.h>

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class ZETFeatObject;
class ZETLaserProcessesPrivate;
class ZETMathAxis;
class ZETVisVirtualObject;

namespace ZETLaserOutline
{
struct Group;
}

/*! The driver of one laser job, with four independent steps: read the model into a tree of laser entities, thin the
 *  points of the tree, write the tree to a file, show it in the scene. It has no policy of its own: a client gets it
 *  from ZETLaserOptions::GetLaserProcesses and calls the steps that it wants, in the order read, process, then write or
 *  display. A step on an empty tree works and gives its empty result.
 *
 *  The options are read live at each step, but for the file type and the nest flags, which the constructor looks at. It
 *  owns the tree, the reader and the renderer; the options own it, and it must not outlive them.
 *
 *  Used from one thread. It catches nothing that the host throws. */
class ZETLASER_EXPORT ZETLaserProcesses : public QObject
{
    Q_OBJECT
    Q_DECLARE_PRIVATE_D(d, ZETLaserProcesses)

public:
    /*! Display objects by the ply or sub-ply that they show and by where their content came from. */
    using VisObjects = QMap<QPointer<ZETFeatObject>, QMap<ZETLaserOptions::ELaserSourceType, ZETVisVirtualObject*>>;

    /*! For FileLAP exactly one of the two nest flags must be on: if both or none is, the constructor corrects \a
     *  options and sends a message of type 0. */
    explicit ZETLaserProcesses(ZETLaserOptions* options);
    ~ZETLaserProcesses() override;

    /*! Empties the tree and reads the model into it. False if the tree stayed empty. The list of materials is kept from
     *  one read to the next. */
    bool ReadLaserData();
    /*! Thins the points of the tree, if GetUseMinimizePointsTolerance(). Always true. */
    bool ProcessLaserData();
    /*! Writes the tree with the writer of GetFileType(). False if there is none, or if the writer failed.
     *
     *  While the file is written the application's default locale is C; behind it, it is the system's, also if the
     *  application had set another. An exception of a writer leaves the C locale in force. */
    bool WriteLaserData();
    /*! Makes hidden display objects of the tree and puts them in the scene. Those of an earlier call are not taken out:
     *  call EraseLaserData first. */
    bool DisplayLaserData();
    /*! Takes the display objects out of the scene. */
    void EraseLaserData();
    /*! The display objects of the last DisplayLaserData; empty before it. They are not valid behind EraseLaserData. */
    VisObjects GetRenderVisObjects();

    // ---- What a client tells its user ----
    /*! What the tree holds that a writer writes: groups without a point don't count. */
    struct Statistics {
        int plies = 0;
        int subPlies = 0;
        qint64 points = 0;      //!< of all curves, each point once
        ZETMathBoundingBox box; //!< of the curves, in mm, in the axis system that was asked for
    };
    /*! \a axis is the one that the written coordinates refer to. */
    Statistics GetStatistics(const ZETMathAxis& axis) const;
    /*! The tree from its root, as plain values (laser/ZETLaserOutline.h): what a written file is compared with. */
    ZETLaserOutline::Group GetOutline() const;
    /*! Files that the last WriteLaserData couldn't open or write whole, by the name under which it opened them, with
     *  what the system said. WriteLaserData itself doesn't look at that. */
    QMap<QString, QString> GetUnwrittenFiles() const;

private:
    std::unique_ptr<ZETLaserProcessesPrivate> d;
};

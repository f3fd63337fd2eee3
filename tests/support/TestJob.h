#pragma once

#include "laser/ZETLaserOptions.h"

#include <QByteArray>
#include <QList>
#include <QSharedPointer>
#include <QString>

#include <memory>
#include <type_traits>

class ZETCompRoot;
class ZETFeatContainer;
class ZETLaserGroup;
class ZETLaserProjector;
class ZETLaserTarget;
class ZETMatMaterial;

/*! A job as a text: options, targets and projectors, and the laser tree with the model objects that its groups stand
 *  for.
 *
 *  Words are separated by blanks and line ends; one in double quotes may hold both, and is never taken for a keyword;
 *  in it, \n is a line end and \q a double quote. # begins a comment, which ends with the line. A fault in the text
 *  ends the test program.
 *
 *  Statements at the top:
 *      partname NAME                       part name of the options
 *      rootname NAME                       name of the root group
 *      units mm|inch    type NUMBER    filetype NUMBER
 *      normals on|off    rosettefirst on|off    nestsequences on|off    nestplies on|off
 *      axis ORIGIN FIRST SECOND            the axis system of the job, with the label "Cell"
 *      target NAME POINT [drift]
 *      projector NAME { NUMBER|null ... }  selected; targets by their number, from 1
 *      idleprojector NAME { ... }          in the model, but not selected
 *      nullprojector                       a null in the selection, at this place
 *      usematerialid on|off
 *      filemode single|material|ply    shapename TEXT
 *      dxf TEXTLAYER TEXTCOLOR GEOMETRYLAYER GEOMETRYCOLOR LINESTYLE
 *      labelsize NUMBER                    twice the height of the labels of DXF
 *      material NAME TYPE ID               of the job
 *      GROUP ...                           a child of the root
 *  A GROUP:
 *      layup|sequence|ply|subply NAME { ... }     stands for a model object of that name
 *      nullply|nullsubply NAME { ... }            has the property, with a null pointer in it
 *      group NAME { ... }                         stands for nothing
 *  and in its braces GROUPs, or
 *      contour [NAME] { [rosettecurve] open|closed [NAME] POINT ... }    any number of curves
 *      parameter information|message|graphic|query|literal|note|NUMBER TEXT
 *      text TEXT ORIGIN FIRST SECOND SIZE                 a 3D text by an axis system
 *      material TYPE ID                                   the material of the group
 *      direction DEGREES                                  that of the ply that the group stands for
 *      of NAME                                            the material of the ply around, by its name in the job
 *      seed POINT                                         the seed point in the flat pattern of the ply or sub-ply
 *  A POINT is x,y,z and a normal may follow, as x,y,z/i,j,k; @x,y,z behind it is the offset point. */
class TestJob
{
public:
    explicit TestJob(const QString& text);
    ~TestJob();
    Q_DISABLE_COPY_MOVE(TestJob)

    ZETLaserOptions& GetOptions() { return options; }
    /*! The root of the tree; never null. */
    QSharedPointer<ZETLaserGroup> GetTree() const { return tree; }
    /*! The root of the model; never null. */
    ZETCompRoot* GetModel() const { return model; }
    /*! In the order of the text. */
    const QList<ZETLaserTarget*>& GetTargets() const { return targets; }
    QList<ZETMatMaterial*>& GetMaterials() { return materials; }

    /*! Takes the model root out of the options, as it is when nobody set it. */
    void RemoveModel();

    /*! Writes the job into \a fileName with the writer \a Writer, which may ask for the materials of the job.
     *  The result is that of Write(). */
    template <typename Writer>
    bool Write(const QString& fileName)
    {
        options.SetFileName(fileName);
        if constexpr (std::is_constructible_v<Writer, ZETLaserOptions*, decltype(tree), decltype(&materials)>)
            return Writer(&options, tree, &materials).Write();
        else
            return Writer(&options, tree).Write();
    }
    /*! The same with the writer of the options' file type. */
    bool WriteFileType(const QString& fileName);

private:
    friend class TestJobParser;

    std::unique_ptr<ZETFeatContainer> container; // owns the model
    ZETCompRoot* model = nullptr;
    QSharedPointer<ZETLaserGroup> tree;
    QList<ZETLaserTarget*> targets;
    QList<ZETMatMaterial*> materials;
    ZETLaserOptions options;
};

/*! The tree alone. */
QSharedPointer<ZETLaserGroup> ParseTree(const QString& text);

#pragma once

#include "writers/ZETDxfParser.h"
#include "writers/ZETLaserWriter.h"

#include <QList>
#include <QTextStream>

#include <memory>

class ZETCompPly;
class ZETLaserContour;
class ZETLaserCurve;
class ZETMatDefinition;
class ZETMatMaterial;

/*! Writes a job as ASCII DXF: for a laser as one 3D file, for a nesting system as flat shapes in one file for the part,
 *  one for each material or one for each ply, each with a block of labels. In the per-ply mode the options' list of
 *  created files tells afterwards what was made.
 *
 *  Normals and parameters have no form in DXF. A closed curve is closed by a flag. */
class ZETLaserWriterDXF final : public ZETLaserWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterDXF)

public:
    /*! \a jobMaterials are the materials of the job, owned by the pipeline. */
    ZETLaserWriterDXF(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot,
                      QList<ZETMatMaterial*>* jobMaterials);

    /*! Throws ZETSysException in the per-ply mode for a ply outside a sequence or layup. What was written until then is
     *  in the files; the report has no foot. */
    bool Write() override;

private:
    friend struct ZETLaserTreeWalk;

    // Jobs.
    void WriteLaserFile();
    void WriteNestingFiles();
    void WritePartFile();
    void WriteMaterialFiles();
    void WriteMaterialFile(ZETMatMaterial* material);
    void WritePlyFiles();
    void WritePlyFile(ZETCompPlyBase* entry);

    // One file.
    void BeginFile(const QString& fileName);
    void EndFile();
    /*! A label at the text point, moved up by \a lines text heights. */
    void WriteLabel(const QString& text, const ZETMathPoint& textPoint, int lines);
    void WriteTree(const ZETMatMaterial* material, const ZETCompPlyBase* ply);
    /*! The report's paragraph that tells which file holds \a name; \a kind is the translated text ahead of the name. */
    void WriteReportFile(const QString& kind, const QString& name, const QString& fileName);
    /*! The report's counts of the file; \a heading is the translated text ahead of the name. */
    void WriteReportCounts(const QString& heading, const QString& name);
    /*! The file name of the options with \a name in it, made safe already. */
    QString GetFileNameFor(const QString& name) const;
    double GetTextHeight() const;

    // Plies and materials.
    void CollectPlies(const ZETLaserGroup& group);
    ZETCompPlyBase* FindPlyOfMaterial(const ZETMatMaterial* material) const;
    QString GetMaterialName(ZETMatMaterial& material) const;
    QString GetShapeName(const ZETLaserParameterProvider& provider, ZETCompPlyBase* entry, const ZETCompPly& ply) const;
    ZETMatMaterial* FindMaterialOfShape(const ZETLaserParameterProvider& provider, ZETCompPlyBase* entry,
                                        ZETCompPly& ply) const;
    void AddNotUniqueMessages(const QString& name);
    void RecordCreatedFile(const QString& name, const QString& fileName, ZETMatMaterial* material);

    // Where labels go.
    ZETMathPoint GetPlyTextPoint(const ZETCompPlyBase* ply) const;
    const ZETLaserContour* GetPlyContour(const ZETLaserGroup& group, const ZETCompPlyBase* ply) const;
    ZETMathPoint GetContourCentre(const ZETLaserContour* contour) const;

    // The walk. A material or ply that isn't null filters the plies.
    void WriteGroup(const ZETLaserGroup& group, const ZETMatMaterial* material, const ZETCompPlyBase* ply);
    bool IsFilteredOut(const ZETLaserGroup& group, const ZETMatMaterial* material, const ZETCompPlyBase* ply) const;
    void WriteContour(const ZETLaserContour& contour);
    void WriteCurve(const ZETLaserCurve& curve);
    void WriteParameters(const ZETLaserGroup& group);
    void WriteTexts(const ZETLaserGroup& group);

    QTextStream dxfStream;                //!< on file
    std::unique_ptr<ZETDxfParser> parser; //!< of the file in hand
    bool is3D = false;                    //!< laser output
    int filePlyCount = 0;                 //!< plies in the file in hand
    int fileSubPlyCount = 0;              //!< sub-plies in the file in hand
    QList<ZETMatMaterial*>* materials;    //!< of the job
    QList<ZETCompPlyBase*> plies;         //!< plies and sub-plies of the tree, in walking order, each once
};

#pragma once

#include "laser/ZETLaserDXFOutputSettings.h"
#include "laser/ZETLaserGlobal.h"

#include <ZETMaterial/ZETMatDefinition.h>

#include <QColor>
#include <QCoreApplication>
#include <QList>
#include <QPointer>
#include <QSharedPointer>
#include <QString>

#include <utility>

class ZETCompMfgConfiguration;
class ZETCompPlyBase;
class ZETCompRoot;
class ZETFeatObject;
class ZETLaserProcesses;
class ZETLaserProjector;
class ZETVisEnvironment;

/*! The settings record of one laser job: the model to read, the file to write, its format, and every switch of reader,
 *  writers, report and display. It also owns the driver of the job.
 *
 *  A client fills it; the library reads it, but for the nest flags, which the driver corrects at its construction, and
 *  for the defaults that SetActiveConfiguration pulls. Setters store the value as it stands: no range test, no signal,
 *  no side effect. Only SetCompRoot and SetActiveConfiguration do more, as told there.
 *
 *  Lengths are in millimetres. Model objects belong to the host; nothing here keeps them alive. A QPointer reads null
 *  when its object has gone, which is the same as never set; the plain pointers of the two lists must outlive the job.
 *
 *  Order matters at two points: SetOutputType(OutputFlatNesting) comes before SetActiveConfiguration, which replaces
 *  every other output type, and SetFileType and the nest flags are final before the first GetLaserProcesses.
 *
 *  It reports nothing and it is used from one thread.
 *
 *  ZETLaserOptions.cpp holds the strings and the driver, ZETLaserOptionsJobSetup.cpp all that takes from the model:
 *  root, configuration, plies, projectors. The accessors of plain values are here. */
class ZETLASER_EXPORT ZETLaserOptions
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserOptions)

public:
    /*! What is written, and by which writer. */
    enum EOutputFileType : int {
        FileVirtek = 0,
        FileLPT = 1,
        FileFARO = 2, //!< same bytes as FileLPT, other make name
        FileLAP = 3,  //!< exactly one of the two nest flags is on
        FileSL = 4,
        FileAssemblyGuidance = 5,
        FileAlignedVision = 6, //!< same bytes as FileAssemblyGuidance, other make name
        FileGeneralScanning = 7,
        FileAPT = 8,
        FileAPT_2 = 9,
        FileAPT_SL = 10,
        FileDXF = 11,
        FileQuilmonPartData = 12 //!< the form of FileGeneralScanning that the nesting product reads
    };

    /*! Which geometry of a ply is used. */
    enum EOutputType : int {
        Output3D = 0,                 //!< the boundary on the tool surface
        OutputFlat = 1,               //!< the flat pattern
        OutputFlatNesting = 2,        //!< the flat pattern, for nesting
        OutputFlatNestingEmbedded = 3 //!< the flat pattern, for nesting inside another output
    };

    /*! Which ply offset the 3D boundary takes. */
    enum EOffsetMode : int {
        OffsetComplete = 0, //!< the updated boundary, as raised by all plies beneath
        OffsetLayup = 1,
        OffsetNone = 2,
        OffsetDebulk = 3
    };

    /*! Which thickness of a material the report names. */
    enum EMaterialThickness : int { ThicknessCured = 0, ThicknessUncured = 1 };

    /*! Units of the written file. The model is always in millimetres. */
    enum EUnits : int { UnitsMillimeters = 0, UnitsInches = 1 };

    /*! How plies are spread over DXF files. */
    enum EDXFFileMode : int {
        DXFSingleFile = 0,      //!< all plies in one file
        DXFFilePerMaterial = 1, //!< one file for each material
        DXFFilePerPly = 2       //!< one file for each ply
    };

    /*! Where an entity of the laser tree came from: the value of its dynamic property "laserEntitySourceType". */
    enum ELaserSourceType : int {
        SourcePly = 0,           //!< ply geometry; an entity without the property counts as this
        SourceExtraGeometry = 1, //!< contour, text or parameter of extra geometry
        SourceRosette = 2,       //!< the "Rosette" curve, in each of its forms
        SourceNormals = 3,       //!< no entity: normal vectors on display
        SourceSeedCurve = 4      //!< the "Seedcurve" curve
    };

    ZETLaserOptions();
    virtual ~ZETLaserOptions();

    // ---- Texts ----

    /*! Name of the make, such as "LAP Laser", and the extension of its part file with the dot, such as ".lpd".
     *  "Unknown" and ".txt" for a value that is none of the enumeration. Not translated. */
    static QString GetFileTypeString(EOutputFileType type);
    static QString GetFileTypeExtensionString(EOutputFileType type);
    /*! The two in the form of a file dialog's filter: "Virtek (*.ply)". */
    static QString GetFileDialogFilterString(EOutputFileType type);
    /*! "mm" or "in"; not translated. Here and below "unset" stands for a value that is none of the enumeration, and
     *  isn't translated either. */
    static QString GetUnitsString(EUnits units);
    /*! "Cured" or "Uncured", translated. */
    static QString GetMaterialThicknessString(EMaterialThickness thickness);
    /*! "Complete", "Layup", "None" or "Debulk", translated. */
    static QString GetOffsetModeString(EOffsetMode mode);

    // ---- The driver of the job ----

    /*! The driver of this job. The first call makes it, with the options as they stand then; later calls return the
     *  same one. It points back to this record and must not outlive it. */
    QSharedPointer<ZETLaserProcesses> GetLaserProcesses();

    // ---- The model ----

    /*! The model to read. Setting it takes the active configuration of the model too, but pulls nothing from that
     *  and leaves the selection alone. DEFAULT: null */
    QPointer<ZETCompRoot> GetCompRoot() const { return compRoot; }
    void SetCompRoot(QPointer<ZETCompRoot> root);
    /*! The manufacturing configuration of the job. Setting one that isn't null overwrites, in this order,
     *  skipParentPlyWithSubPlies, includeNormalVectors, outputType, rosetteSize, useSeedPoint, useSeedCurve,
     *  outputExtraGeometry and outputRosette from it, and selects all plies. Null is stored and changes nothing else.
     *  DEFAULT: null */
    QPointer<const ZETCompMfgConfiguration> GetActiveConfiguration() const { return activeConfiguration; }
    void SetActiveConfiguration(const ZETCompMfgConfiguration* configuration);
    /*! The axis system that the written coordinates refer to; null for that of the model. DEFAULT: null */
    QPointer<const ZETFeatObject> GetAxisSystem() const { return axisSystem; }
    void SetAxisSystem(QPointer<const ZETFeatObject> system) { axisSystem = std::move(system); }
    /*! The scene that the laser data is displayed in. DEFAULT: null */
    QPointer<ZETVisEnvironment> GetEnvironment() const { return environment; }
    void SetEnvironment(QPointer<ZETVisEnvironment> scene) { environment = std::move(scene); }

    // ---- The selection ----

    /*! The plies and sub-plies that the job outputs, in model order and each once. DEFAULT: empty */
    const QList<const ZETCompPlyBase*>& GetPlies() const { return plies; }
    /*! Adds \a ply, if it is among the included plies of the active configuration; those selected earlier that are
     *  not among them any more drop out. Makes no test for a flat pattern. */
    void AddPly(ZETCompPlyBase* ply);
    /*! Selects all included plies; for any type but Output3D only those that have a flat pattern without regard to a
     *  configuration. The argument counts, not GetOutputType. */
    void SelectAllPlies(EOutputType type);
    /*! The plies and sub-plies at or below \a object that a job may output, in model order; with a null \a object,
     *  those of the whole model that \a configuration belongs to. Disabled features hide all that is below them. Empty
     *  if \a configuration is null. */
    static QList<ZETCompPlyBase*> GetIncludedPlies(const ZETCompMfgConfiguration* configuration,
                                                   bool skipParentPlyWithSubPlies, ZETFeatObject* object);

    /*! The projectors that the job addresses, in model order and each once. DEFAULT: empty */
    const QList<const ZETLaserProjector*>& GetProjectors() const { return projectors; }
    /*! Adds \a projector, if it belongs to the model. A disabled projector is still a projector. */
    void AddProjector(const ZETLaserProjector* projector);
    /*! Selects all projectors of the model. */
    void SelectAllProjectors();

    // ---- The file ----

    /*! Name of the part, for writers and report. DEFAULT: empty */
    QString GetPartName() const { return partName; }
    void SetPartName(const QString& name) { partName = name; }
    /*! Path of the file to write. DEFAULT: empty */
    QString GetFileName() const { return fileName; }
    void SetFileName(const QString& name) { fileName = name; }
    /*! DEFAULT: FileGeneralScanning */
    EOutputFileType GetFileType() const { return fileType; }
    void SetFileType(EOutputFileType type) { fileType = type; }
    /*! DEFAULT: UnitsMillimeters */
    EUnits GetUnits() const { return units; }
    void SetUnits(EUnits value) { units = value; }

    /*! Whether the tool file goes to GetTargetFilePath instead of beside the part file. Only the LPT writer asks.
     *  DEFAULT: false */
    bool GetUseSpecificPathForLaserFile() const { return useSpecificPathForLaserFile; }
    void SetUseSpecificPathForLaserFile(bool use) { useSpecificPathForLaserFile = use; }
    /*! Kept for clients; nothing in the library reads it. DEFAULT: empty */
    QString GetLaserFilePath() const { return laserFilePath; }
    void SetLaserFilePath(const QString& path) { laserFilePath = path; }
    /*! DEFAULT: empty */
    QString GetTargetFilePath() const { return targetFilePath; }
    void SetTargetFilePath(const QString& path) { targetFilePath = path; }
    /*! The next two are kept for clients; nothing in the library reads them. DEFAULT: false, empty */
    bool GetUseSpecificPathForQuilmonFile() const { return useSpecificPathForQuilmonFile; }
    void SetUseSpecificPathForQuilmonFile(bool use) { useSpecificPathForQuilmonFile = use; }
    QString GetQuilmonFilePath() const { return quilmonFilePath; }
    void SetQuilmonFilePath(const QString& path) { quilmonFilePath = path; }

    /*! Whether clients want a laser file at all; nothing in the library reads it. DEFAULT: true */
    bool CreateLaserData() const { return createLaserData; }
    void SetCreateLaserData(bool create) { createLaserData = create; }

    // ---- Points ----

    /*! Thin the points of each curve. DEFAULT: true */
    bool GetUseMinimizePointsTolerance() const { return useMinimizePointsTolerance; }
    void SetUseMinimizePointsTolerance(bool use) { useMinimizePointsTolerance = use; }
    /*! Largest distance, in mm, that thinning may take a point off its chord's line. DEFAULT: 0.01 */
    double GetMinimizePointsTolerance() const { return minimizePointsTolerance; }
    void SetMinimizePointsTolerance(double tolerance) { minimizePointsTolerance = tolerance; }
    /*! Limit the length of a segment, when curves are sampled and when they are thinned. DEFAULT: false */
    bool GetUseMaxLength() const { return useMaxLength; }
    void SetUseMaxLength(bool use) { useMaxLength = use; }
    /*! That limit, in mm; used only while GetUseMaxLength(). DEFAULT: 1000000.0 */
    double GetMaxLength() const { return maxLength; }
    void SetMaxLength(double length) { maxLength = length; }
    /*! Instead of the updated boundary, take the boundary on the tool and lift its points by the thickness of the plies
     *  beneath. Counts only with OffsetComplete. DEFAULT: false */
    bool GetUsePointOffset() const { return usePointOffset; }
    void SetUsePointOffset(bool use) { usePointOffset = use; }
    /*! Distance, in mm, by which a point may lie outside a boundary and still be lifted by that ply. DEFAULT: 0.01 */
    double GetBoundaryTolerance() const { return boundaryTolerance; }
    void SetBoundaryTolerance(double tolerance) { boundaryTolerance = tolerance; }
    /*! DEFAULT: OffsetNone */
    EOffsetMode GetOffsetMode() const { return offsetMode; }
    void SetOffsetMode(EOffsetMode mode) { offsetMode = mode; }
    /*! DEFAULT: ThicknessUncured */
    EMaterialThickness GetMaterialThickness() const { return materialThickness; }
    void SetMaterialThickness(EMaterialThickness thickness) { materialThickness = thickness; }

    // ---- What is output ----
    // The switches of type int are off at zero and on at any other value, so that the state of a check box can be
    // stored.

    /*! DEFAULT: Output3D */
    EOutputType GetOutputType() const { return outputType; }
    void SetOutputType(EOutputType type) { outputType = type; }
    /*! Kept for clients; nothing in the library reads it. DEFAULT: 0 */
    int GetOutputCourses() const { return outputCourses; }
    void SetOutputCourses(int output) { outputCourses = output; }
    /*! Whether the report says that sub-plies are output; which are is up to the selection. DEFAULT: 1 */
    int GetOutputSubPly() const { return outputSubPly; }
    void SetOutputSubPly(int output) { outputSubPly = output; }
    /*! DEFAULT: 1 */
    int GetOutputExtraGeometry() const { return outputExtraGeometry; }
    void SetOutputExtraGeometry(int output) { outputExtraGeometry = output; }
    /*! DEFAULT: 0 */
    int GetOutputRosette() const { return outputRosette; }
    void SetOutputRosette(int output) { outputRosette = output; }
    /*! Place the rosette at the seed point. DEFAULT: 0 */
    int GetUseSeedPoint() const { return useSeedPoint; }
    void SetUseSeedPoint(int use) { useSeedPoint = use; }
    /*! Output the seed curve beside the boundary. DEFAULT: 0 */
    int GetUseSeedCurve() const { return useSeedCurve; }
    void SetUseSeedCurve(int use) { useSeedCurve = use; }
    /*! Leave a ply out when its sub-plies are there. Stored as a bool: reads 0 or 1. DEFAULT: 0 */
    int GetSkipParentPlyWithSubPlies() const { return skipParentPlyWithSubPlies ? 1 : 0; }
    void SetSkipParentPlyWithSubPlies(int skip) { skipParentPlyWithSubPlies = skip != 0; }

    // ---- Structure of the file ----

    /*! Give each sequence a group of its own around its plies. DEFAULT: true */
    bool GetNestPliesWithinSequence() const { return nestPliesWithinSequence; }
    void SetNestPliesWithinSequence(bool nest) { nestPliesWithinSequence = nest; }
    /*! Write each layup as a layer of its own around its sequences. DEFAULT: true */
    bool GetNestSequencesWithinLayup() const { return nestSequencesWithinLayup; }
    void SetNestSequencesWithinLayup(bool nest) { nestSequencesWithinLayup = nest; }
    /*! Extra geometry, rosette and seed curve stand ahead of a ply's boundary, and parameters and texts ahead of its
     *  curves. DEFAULT: false */
    bool GetRosetteBeforePlyGeometry() const { return rosetteBeforePlyGeometry; }
    void SetRosetteBeforePlyGeometry(bool before) { rosetteBeforePlyGeometry = before; }

    // ---- Normals and rosette ----

    /*! Write the normals of points. DEFAULT: true */
    bool GetIncludeNormalVectors() const { return includeNormalVectors; }
    void SetIncludeNormalVectors(bool include) { includeNormalVectors = include; }
    /*! Length of the normals on display, in mm, and their colour. DEFAULT: 20.0, opaque green */
    double GetNormalVectorSize() const { return normalVectorSize; }
    void SetNormalVectorSize(double size) { normalVectorSize = size; }
    QColor GetNormalVectorColor() const { return normalVectorColor; }
    void SetNormalVectorColor(const QColor& color) { normalVectorColor = color; }
    /*! Length of the rosette's long arm, in mm. DEFAULT: 100.0 */
    double GetRosetteSize() const { return rosetteSize; }
    void SetRosetteSize(double size) { rosetteSize = size; }
    /*! The same for output to nesting. DEFAULT: 100.0 */
    double GetRosetteSizeQuilmon() const { return rosetteSizeQuilmon; }
    void SetRosetteSizeQuilmon(double size) { rosetteSizeQuilmon = size; }

    // ---- DXF and nesting ----

    /*! Name materials by their id instead of their type. DEFAULT: false */
    bool GetUseMaterialID() const { return useMaterialID; }
    void SetUseMaterialID(bool use) { useMaterialID = use; }
    /*! DEFAULT: DXFFilePerMaterial */
    EDXFFileMode GetDXFFileMode() const { return dxfFileMode; }
    void SetDXFFileMode(EDXFFileMode mode) { dxfFileMode = mode; }
    /*! Pattern of the name of a shape, with macros such as "%PLY%". DEFAULT: empty */
    QString GetShapeName() const { return shapeName; }
    void SetShapeName(const QString& name) { shapeName = name; }
    ZETLaserDXFOutputSettings GetDXFOutputSettings() const { return dxfOutputSettings; }
    void SetDXFOutputSettings(const ZETLaserDXFOutputSettings& settings) { dxfOutputSettings = settings; }

    /*! A file of one shape: the shape's name as in the file name, the file name, and the definition of its material. */
    using CreatedFile = std::pair<QString, std::pair<QString, ZETMatDefinition>>;
    /*! The files that the DXF writer made with DXFFilePerPly, each once. Nothing clears the list. DEFAULT: empty */
    QList<CreatedFile>& GetCreatedFiles() { return createdFiles; }
    const QList<CreatedFile>& GetCreatedFiles() const { return createdFiles; }

private:
    Q_DISABLE_COPY_MOVE(ZETLaserOptions)

    /*! All plies and sub-plies that may be selected, in model order. */
    QList<ZETCompPlyBase*> GetSelectablePlies() const;
    /*! All projectors of the model, in its order. */
    QList<const ZETLaserProjector*> GetModelProjectors() const;

    QPointer<ZETCompRoot> compRoot;
    QPointer<ZETVisEnvironment> environment;
    QPointer<const ZETCompMfgConfiguration> activeConfiguration;
    QString partName;
    QString fileName;
    EOutputFileType fileType = FileGeneralScanning;
    EUnits units = UnitsMillimeters;
    QList<const ZETCompPlyBase*> plies;
    QPointer<const ZETFeatObject> axisSystem;
    QList<const ZETLaserProjector*> projectors;
    EOffsetMode offsetMode = OffsetNone;
    EMaterialThickness materialThickness = ThicknessUncured;
    bool useMaxLength = false;
    double maxLength = 1000000.0;
    bool useMinimizePointsTolerance = true;
    double minimizePointsTolerance = 0.01;
    EOutputType outputType = Output3D;
    int outputCourses = 0;
    int outputSubPly = 1;
    int outputExtraGeometry = 1;
    int outputRosette = 0;
    int useSeedPoint = 0;
    int useSeedCurve = 0;
    bool useSpecificPathForLaserFile = false;
    QString laserFilePath;
    QString targetFilePath;
    bool nestPliesWithinSequence = true;
    bool nestSequencesWithinLayup = true;
    bool skipParentPlyWithSubPlies = false;
    bool rosetteBeforePlyGeometry = false;
    bool includeNormalVectors = true;
    double normalVectorSize = 20.0;
    QColor normalVectorColor = QColor(0, 255, 0, 255);
    double rosetteSize = 100.0;
    bool useSpecificPathForQuilmonFile = false;
    QString quilmonFilePath;
    bool useMaterialID = false;
    double rosetteSizeQuilmon = 100.0;
    EDXFFileMode dxfFileMode = DXFFilePerMaterial;
    QList<CreatedFile> createdFiles;
    bool createLaserData = true;
    bool usePointOffset = false;
    double boundaryTolerance = 0.01;
    [[maybe_unused]] double unused = 0.5; // Meant: part of the record, without accessors; nothing reads it.
    QSharedPointer<ZETLaserProcesses> laserProcesses;
    QString shapeName;
    ZETLaserDXFOutputSettings dxfOutputSettings;
};

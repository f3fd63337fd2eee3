#pragma once

#include "check/CheckFile.h"

#include <QList>

#include <optional>

class ZETLaserOptions;
class ZETLaserTarget;

/*! The targets of a job, as the formats take them from the model. */
class JobExpectedTargets
{
public:
    enum Projectors {
        OfJob,  //!< those of the options
        OfModel //!< all, whether the job has them or not
    };

    explicit JobExpectedTargets(const ZETLaserOptions& jobOptions);

    /*! The model has some: without any, none is written and no file made. */
    bool HasTargets() const { return !all.isEmpty(); }
    /*! A projector is gone, or a target of one: formats count it, but have nothing to write for it. */
    bool HasGaps() const;

    /*! What Virtek, LAP, SL, LPT and FARO have in a file of their own, AG and General Scanning in the part file. */
    void AddVirtek(CheckFile& file) const;
    void AddLap(CheckFile& file) const;
    void AddSl(CheckFile& file) const;
    void AddTool(CheckFile& file) const;
    void AddAssemblyGuidance(CheckFile& file) const;
    void AddGeneralScanning(CheckFile& file) const;

private:
    using Targets = QList<ZETLaserTarget*>;

    /*! The targets of each projector, which may be gone; where there is no projector, all targets as one list. */
    QList<std::optional<Targets>> GetLists(Projectors projectors) const;
    /*! True if these lists are of projectors. */
    bool HasProjectors(Projectors projectors) const;

    struct Place {
        int index; //!< in the list
        int count; //!< of the targets ahead that aren't gone
    };
    /*! Adds the targets that aren't gone, and hands each to \a use with its target of the model and its place. */
    template <typename Use>
    void AddAll(CheckFile& file, const std::optional<Targets>& targets, int projector, Use use) const;

    const ZETLaserOptions& options;
    Targets all;
};

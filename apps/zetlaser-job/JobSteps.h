#pragma once

#include "JobError.h"

#include "openhost/layup/ZETOpenLayupFile.h"

#include <ZETMathematics/ZETMathZeroMagnitudeVectorException.h>
#include <ZETSystem/ZETSysException.h>

#include <QCoreApplication>
#include <QString>

class ZETLaserOptions;

/*! The steps that each kind of job begins with. Each throws JobError. */
namespace JobSteps
{
/*! Calls a step of the library; what it throws ends the job. */
template <typename Step>
void Run(Step step)
{
    try {
        step();
    } catch (const ZETSysException& error) {
        throw JobError(JobExit::Failed,
                       QCoreApplication::translate("zetlaser-job", "the job failed: %1").arg(error.GetMessage()));
    } catch (const ZETMathZeroMagnitudeVectorException&) {
        throw JobError(JobExit::Failed,
                       QCoreApplication::translate("zetlaser-job", "the job failed: a direction has no length"));
    }
}

/*! Reads the layup file and tells its warnings. \a beforeShape is called ahead of reading each shape file. */
ZETOpenLayupModel LoadModel(const QString& layupFile, const ZETOpenLayupFile::ShapeListener& beforeShape = {});
/*! Throws unless plies are selected. */
void CheckSelection(const ZETLaserOptions& options);
/*! Reads the selected plies into the job's tree. */
void Read(ZETLaserOptions& options);
/*! Thins the points of the tree. */
void Thin(ZETLaserOptions& options);
} // namespace JobSteps

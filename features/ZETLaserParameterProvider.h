#pragma once

#include "laser/ZETLaserGlobal.h"

#include <QCoreApplication>
#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

class ZETCompFlatContour;
class ZETCompMfgConfiguration;
class ZETCompPlyBase;
class ZETFeatContainer;

/*! Fills in text macros such as "%PLY%" from a ply's place in the model, for names in files and for texts, and checks
 *  the patterns of shape names.
 *
 *  Built in are, in this order: "%SOURCE%" (path of the model's file), "%PART%", "%SEQ%", "%LAYUP%", "%PLY%",
 *  "%SUBPLY%" (labels of the model root, sequence, layup, ply and sub-ply), "%MAT%", "%MAT_ID%" (label and id of the
 *  first material) and "%ORI%" (direction in degrees, with one decimal). For a sub-ply, ply, material and direction are
 *  those of its parent ply. Case counts. The provider of the model's container may bring more parameters.
 *
 *  A value: it holds a table of those extra parameters and nothing else. Model objects that it returns belong to the
 *  model. Where it says "bare name", the name stands without percent signs. It reports nothing; what is wrong comes
 *  back as a result. */
class ZETLASER_EXPORT ZETLaserParameterProvider
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserParameterProvider)

public:
    /*! Asks the provider of \a container, which may be null, for the extra parameters. */
    explicit ZETLaserParameterProvider(const ZETFeatContainer* container);

    /*! \a text with its macros replaced for \a ply; unknown macros disappear. Null for \a ply gives \a text itself. */
    QString EvaluateParameterText(const ZETCompPlyBase* ply, const QString& text) const;
    /*! The value of the macro with the bare name \a name. An extra parameter goes before a built-in one. Empty for an
     *  unknown name and for a ply that stands outside a complete model; \a name itself for a null ply. */
    QString GetParameterValue(const ZETCompPlyBase* ply, const QString& name) const;

    /*! The built-in macros with their percent signs, then the bare names of the extra parameters. */
    QList<QString> GetParameterList() const;
    /*! \a name itself if it is a built-in macro with its percent signs, otherwise with a percent sign on each side. */
    QString GetFormatedParameterName(const QString& name) const;
    /*! Whether every macro of \a text is known. True without macros. */
    bool ValidateLaserParameterText(const QString& text) const;

    /*! What is wrong with \a text as a pattern of shape names, as translated messages; empty if it can be used. */
    QList<QString> EvaluateShapeName(const ZETCompMfgConfiguration* configuration, const QString& text) const;
    /*! The plies over which a shape name is evaluated: sub-plies stand for their parents, and all have a flat pattern.
     */
    QList<ZETCompPlyBase*> GetEvaluatingPlies(const ZETCompMfgConfiguration* configuration) const;
    /*! The flat contour that stands for \a ply; null if there is none, or if an argument is null. */
    ZETCompFlatContour* GetEvaluatingFlatContourFromPly(const ZETCompMfgConfiguration* configuration,
                                                        const ZETCompPlyBase* ply) const;
    /*! The flat contours of the whole model, disabled plies included. */
    QList<ZETCompFlatContour*> GetEvaluatingFlatContours(const ZETCompMfgConfiguration* configuration) const;

private:
    friend class TestLaserParameterProvider;

    /*! Each non-empty evaluated name with the number of its occurrences, once included. */
    QMap<QString, int> EvaluateDuplicateShapeName(const ZETCompMfgConfiguration* configuration,
                                                  const QString& text) const;
    /*! The plies for which \a text evaluates to nothing. */
    QList<ZETCompPlyBase*> EvaluateEmptyShapeNamePlies(const ZETCompMfgConfiguration* configuration,
                                                       const QString& text) const;
    /*! The bare names of the macros of \a text in order, with duplicates. */
    QList<QString> GetParametersFromText(const QString& text) const;

    QHash<QString, QString> extraParameters;
};

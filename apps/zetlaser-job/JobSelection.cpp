#include "JobSelection.h"

#include "JobError.h"
#include "JobPly.h"
#include "JobSettings.h"

#include "features/ZETLaserProjector.h"
#include "laser/ZETLaserOptions.h"
#include "openhost/layup/ZETOpenJson.h"
#include "openhost/ZETComposites/ZETOpenComposites.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETComposites/ZETCompSubdivision.h>

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

[[noreturn]] void FailUnknown(const QString& what, const QString& name, const QStringList& known)
{
    const QString nearest = ZETOpenJsonDocument::GetNearest(name, known);
    const QString text = Translate("the model has no %1 \"%2\"").arg(what, name);
    throw JobError(JobExit::WrongCall,
                   nearest.isEmpty() ? text : text + Translate(", did you mean \"%1\"?").arg(nearest));
}

/*! The feature of that class and label. */
template <typename Feature>
Feature* FindFeature(const ZETCompRoot& root, const QString& name, const QString& what)
{
    QStringList known;
    for (ZETFeatObject* child : root.GetAllChildren()) {
        auto* feature = qobject_cast<Feature*>(child);
        if (feature && feature->GetLabel() == name)
            return feature;
        if (feature)
            known.append(feature->GetLabel());
    }
    FailUnknown(what, name, known);
}

/*! "layup/sequence/ply", "layup/sequence/ply/sub-ply". */
QString GetLabelPath(const ZETFeatObject& feature)
{
    QStringList labels;
    for (const ZETFeatObject* at = &feature; at && !qobject_cast<const ZETCompRoot*>(at); at = at->GetParent()) {
        if (!qobject_cast<const ZETCompSubdivision*>(at))
            labels.prepend(at->GetLabel());
    }
    return labels.join(u'/');
}

bool IsMeant(const QString& path, const QString& name)
{
    return path == name || path.endsWith(u'/' + name);
}

/*! Whether \a name means \a ply or the ply that it is a piece of. */
bool IsMeant(const ZETCompPlyBase& ply, const QString& name)
{
    for (const ZETFeatObject* at = &ply; at; at = at->GetParent()) {
        if (qobject_cast<const ZETCompPlyBase*>(at) && IsMeant(GetLabelPath(*at), name))
            return true;
    }
    return false;
}

bool IsInLayups(const ZETCompPlyBase& ply, const QStringList& layups)
{
    for (const ZETFeatObject* at = &ply; at; at = at->GetParent()) {
        if (qobject_cast<const ZETCompLayup*>(at))
            return layups.contains(at->GetLabel());
    }
    return false;
}

void ApplySettings(ZETLaserOptions& options, const JobSettings& settings, bool isBehindConfiguration)
{
    for (const JobSetting& setting : JobSettingTable::GetAll()) {
        if (setting.record.apply && settings.Has(setting.key) &&
            (!isBehindConfiguration || setting.isBehindConfiguration))
            setting.record.apply(options, settings.Get(setting.key));
    }
}

void SelectConfiguration(ZETLaserOptions& options, ZETCompRoot& root, const JobSettings& settings)
{
    if (settings.Has(u"configuration"_s)) {
        auto* chosen = FindFeature<ZETCompMfgConfiguration>(root, settings.GetText(u"configuration"_s),
                                                            Translate("configuration"));
        ZETOpenComposites::SetActiveMfgConfiguration(root, chosen);
    }
    options.SetCompRoot(&root);
    options.SetActiveConfiguration(root.GetActiveMfgConfiguration());
}

/*! Leaves only \a chosen selected. The record has no way to take plies out one by one, but it selects none without a
 *  configuration, and setting the root brings the configuration back without its defaults. */
void SelectOnly(ZETLaserOptions& options, ZETCompRoot& root, const QList<const ZETCompPlyBase*>& chosen)
{
    options.SetActiveConfiguration(nullptr);
    options.SelectAllPlies(options.GetOutputType());
    options.SetCompRoot(&root);
    for (const ZETCompPlyBase* ply : chosen)
        options.AddPly(const_cast<ZETCompPlyBase*>(ply));
}

void SelectPlies(ZETLaserOptions& options, ZETCompRoot& root, const JobSettings& settings)
{
    options.SelectAllPlies(options.GetOutputType());
    const QStringList layups = settings.GetList(u"layups"_s);
    const QStringList names = settings.GetList(u"plies"_s);
    if (layups.isEmpty() && names.isEmpty())
        return;
    for (const QString& layup : layups)
        FindFeature<ZETCompLayup>(root, layup, Translate("layup"));

    const QList<const ZETCompPlyBase*> all = options.GetPlies();
    QList<const ZETCompPlyBase*> chosen;
    for (const ZETCompPlyBase* ply : all) {
        const bool isNamed = names.isEmpty() || std::any_of(names.begin(), names.end(),
                                                            [&](const QString& name) { return IsMeant(*ply, name); });
        if (isNamed && (layups.isEmpty() || IsInLayups(*ply, layups)))
            chosen.append(ply);
    }
    for (const QString& name : names) {
        QStringList known;
        for (const ZETCompPlyBase* ply : all)
            known.append(ply->GetLabel());
        if (std::none_of(all.begin(), all.end(), [&](const ZETCompPlyBase* ply) { return IsMeant(*ply, name); }))
            FailUnknown(Translate("ply to output called"), name, known);
    }
    SelectOnly(options, root, chosen);
}

void SelectProjectors(ZETLaserOptions& options, const ZETCompRoot& root, const JobSettings& settings)
{
    if (!settings.Has(u"projectors"_s)) {
        options.SelectAllProjectors();
        return;
    }
    for (const QString& name : settings.GetList(u"projectors"_s))
        options.AddProjector(FindFeature<ZETLaserProjector>(root, name, Translate("projector")));
}

QString GetLabel(const ZETFeatObject* feature)
{
    return feature ? feature->GetLabel() : QString();
}

QStringList GetProjectorNames(const ZETLaserOptions& options)
{
    QStringList names;
    for (const ZETLaserProjector* projector : options.GetProjectors())
        names.append(projector->GetLabel());
    return names;
}

QStringList GetLayupNames(const ZETLaserOptions& options)
{
    QStringList names;
    for (const ZETCompPlyBase* ply : options.GetPlies())
        names.append(JobPly(*ply).layup);
    names.removeDuplicates();
    return names;
}

QStringList GetPlyPaths(const ZETLaserOptions& options)
{
    QStringList paths;
    for (const ZETCompPlyBase* ply : options.GetPlies())
        paths.append(GetLabelPath(*ply));
    return paths;
}
} // namespace

ZETCompRosette* FindRosette(const ZETCompRoot& root, const QString& name)
{
    return FindFeature<ZETCompRosette>(root, name, Translate("rosette"));
}

void FillOptions(ZETLaserOptions& options, ZETCompRoot& root, const JobSettings& settings)
{
    ApplySettings(options, settings, false); // the output type for nesting has to be there before the configuration
    SelectConfiguration(options, root, settings);
    ApplySettings(options, settings, true);
    if (!settings.Has(u"partName"_s))
        options.SetPartName(root.GetLabel());
    if (settings.Has(u"axisSystem"_s)) {
        options.SetAxisSystem(FindRosette(root, settings.GetText(u"axisSystem"_s)));
    }
    SelectPlies(options, root, settings);
    SelectProjectors(options, root, settings);
}

QVariant GetValueInForce(const JobSetting& setting, const JobSettings& settings, const ZETLaserOptions& options)
{
    // The job puts a temporary folder into the record, so paths are taken from where they were set.
    const bool isPath = setting.kind == JobSetting::File || setting.kind == JobSetting::Folder;
    if (setting.record.read && !isPath)
        return setting.record.read(options);
    if (setting.key == u"configuration"_s)
        return GetLabel(options.GetActiveConfiguration().data());
    if (setting.key == u"axisSystem"_s)
        return GetLabel(options.GetAxisSystem().data());
    if (setting.key == u"projectors"_s)
        return GetProjectorNames(options);
    if (setting.key == u"layups"_s)
        return GetLayupNames(options);
    if (setting.key == u"plies"_s)
        return GetPlyPaths(options);
    return settings.Get(setting.key);
}

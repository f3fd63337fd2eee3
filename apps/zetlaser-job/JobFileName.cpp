#include "JobFileName.h"

#include "JobError.h"

#include "features/ZETLaserParameterProvider.h"
#include "laser/ZETLaserOptions.h"

#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETSystem/ZETSysFileUtilities.h>

#include <QCoreApplication>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QString sourceMacro = u"%SOURCE%"_s;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

[[noreturn]] void Fail(const QString& text)
{
    throw JobError(JobExit::WrongCall, text);
}

void CheckMacros(const ZETLaserParameterProvider& provider, const QString& pattern)
{
    if (!provider.ValidateLaserParameterText(pattern)) {
        QStringList known;
        for (const QString& name : provider.GetParameterList())
            known.append(provider.GetFormatedParameterName(name));
        known.removeOne(sourceMacro);
        known.sort();
        Fail(Translate("the file name \"%1\" has an unknown macro, known are %2").arg(pattern, known.join(u", "_s)));
    }
    if (pattern.contains(sourceMacro))
        Fail(Translate("the file name \"%1\" has the macro %2, which gives a path and no part of a file name")
                 .arg(pattern, sourceMacro));
}
} // namespace

QString GetFileName(const ZETLaserOptions& options, const QString& pattern)
{
    const auto* container = qobject_cast<const ZETFeatContainer*>(options.GetCompRoot()->GetContainer());
    const ZETLaserParameterProvider provider(container);
    CheckMacros(provider, pattern);
    QStringList names;
    for (const ZETCompPlyBase* ply : options.GetPlies()) {
        const QString name = provider.EvaluateParameterText(ply, pattern);
        if (!names.contains(name))
            names.append(name);
        if (names.size() > 1)
            Fail(Translate("the file name \"%1\" isn't the same for all plies of the output, found \"%2\" and \"%3\"")
                     .arg(pattern, names[0], names[1]));
    }
    const QString name = names.value(0, pattern);
    if (name.startsWith(u'.'))
        Fail(Translate("expected a file name that doesn't begin with a dot, found \"%1\"").arg(name));
    return name == pattern ? name : ZETSysFileUtilities::CreateSafeFilename(name, u'_', QString());
}

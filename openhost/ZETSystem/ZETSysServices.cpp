#include <ZETSystem/ZETSysFileUtilities.h>
#include <ZETSystem/ZETSysRegisterInit.h>
#include <ZETSystem/ZETSysUrlUtility.h>
#include <ZETSystem/ZETSysValue.h>

namespace
{
/*! What one of the common file systems refuses in a file name, and control characters, which no reader of a name sees.
 */
bool IsRefused(QChar character)
{
    constexpr QStringView refused = u"<>:\"/\\|?*";
    return character.category() == QChar::Other_Control || refused.contains(character);
}
} // namespace

QString ZETSysFileUtilities::CreateSafeFilename(const QString& name, const QChar& replacement, const QString& extra)
{
    QString safe = name;
    for (QChar& character : safe) {
        if (IsRefused(character) || extra.contains(character))
            character = replacement;
    }
    return safe;
}

double ZETSysValue::ConvertFromSystemUnit(double value, Unit unit)
{
    constexpr double degreesPerRadian = 57.29577951308232;
    return unit == UnitDegree ? value * degreesPerRadian : value;
}

QString ZETSysUrlUtility::GetFilePathFromURL(const QUrl& url)
{
    return url.toLocalFile();
}

bool ZETSysRegisterInit(const std::function<void()>& initFunction)
{
    // There is nothing to wait for here: whoever can call this has loaded the whole open host.
    if (!initFunction)
        return false;
    initFunction();
    return true;
}

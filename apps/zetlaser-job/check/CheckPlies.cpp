#include "CheckPlies.h"

#include <QStringList>

#include <algorithm>
#include <limits>

namespace
{
constexpr size_t none = std::numeric_limits<size_t>::max();

/*! Whether all of \a few stand in \a many in their order. */
bool IsWithin(const QStringList& few, const QStringList& many)
{
    auto at = many.begin();
    for (const QString& name : few) {
        at = std::find(at, many.end(), name);
        if (at == many.end())
            return false;
        ++at;
    }
    return true;
}

/*! One ply as the operator tells it from others. */
struct Name {
    QString name;
    QStringList layers;
    int line = 0;
    int endLine = 0;
    bool isLaid = true; //!< no mere guide
    size_t place = 0;   //!< from 1, among those that are laid

    bool IsSame(const Name& other) const
    {
        return name == other.name && (IsWithin(layers, other.layers) || IsWithin(other.layers, layers));
    }
};

template <typename IsLaid>
std::vector<Name> GetNames(const CheckFile& file, const std::vector<CheckPly>& plies, IsLaid isLaid)
{
    std::vector<Name> names;
    size_t place = 0;
    for (const CheckPly& ply : plies) {
        if (ply.group < 0) // it comes last
            continue;
        const CheckGroup& group = file.groups[static_cast<size_t>(ply.group)];
        Name& name = names.emplace_back(Name{group.name, {}, group.line, group.endLine, isLaid(ply)});
        for (int at = group.parent; at >= 0; at = file.groups[static_cast<size_t>(at)].parent)
            name.layers.prepend(file.groups[static_cast<size_t>(at)].name);
        name.place = name.isLaid ? ++place : 0;
    }
    return names;
}

class Pairing
{
public:
    Pairing(CheckedFile& checkedFile, const CheckedModel& checkedModel)
        : file(checkedFile)
        , model(checkedModel)
        , wanted(GetNames(*model.file, model.plies, [&](const CheckPly& ply) { return model.HasBoundary(ply); }))
        , held(GetNames(file.content, file.plies, [&](const CheckPly& ply) { return !IsGuide(ply); }))
        , heldOf(wanted.size(), none)
        , wantedOf(held.size(), none)
    {
    }

    CheckPairs Run()
    {
        for (const auto& [first, second] :
             AlignInOrder(wanted.size(), held.size(), [&](size_t i, size_t j) { return wanted[i].IsSame(held[j]); }))
            Pair(first, second);
        PairElsewhere([](const Name& one, const Name& other) { return one.IsSame(other); },
                      [&](const Name& one, const Name& other) { TellPlace(one, other); });
        PairElsewhere([](const Name& one, const Name& other) { return one.name == other.name; },
                      [&](const Name& one, const Name& other) { TellLayer(one, other); });
        TellUnpaired();
        return GetPairs();
    }

private:
    bool IsGuide(const CheckPly& ply) const
    {
        return !ply.curves.empty() && std::all_of(ply.curves.begin(), ply.curves.end(), [&](size_t curve) {
            const CheckCurveKind kind = file.content.curves[curve].kind;
            return kind != CheckCurveKind::Boundary && kind != CheckCurveKind::Unknown;
        });
    }

    void Pair(size_t first, size_t second)
    {
        heldOf[first] = second;
        wantedOf[second] = first;
    }

    template <typename IsAlike, typename Tell>
    void PairElsewhere(IsAlike isAlike, Tell tell)
    {
        for (size_t i = 0; i < wanted.size(); ++i) {
            if (heldOf[i] != none)
                continue;
            for (size_t j = 0; j < held.size(); ++j) {
                if (wantedOf[j] == none && isAlike(wanted[i], held[j])) {
                    Pair(i, j);
                    if (wanted[i].isLaid)
                        tell(wanted[i], held[j]);
                    break;
                }
            }
        }
    }

    void TellPlace(const Name& one, const Name& other)
    {
        file.AddWarning(
            other.line, other.name,
            Check::tr("the ply is number %1 in the file, and number %2 in the model").arg(other.place).arg(one.place));
    }

    void TellLayer(const Name& one, const Name& other)
    {
        file.AddWarning(other.line, other.name,
                        Check::tr("the ply stands in %1, and in the model in %2")
                            .arg(other.layers.join(u'/'), one.layers.join(u'/')));
    }

    void TellUnpaired()
    {
        const auto isLaid = [](const Name& name) { return name.isLaid; };
        const bool isStrange = std::all_of(heldOf.begin(), heldOf.end(), [](size_t place) { return place == none; });
        if (isStrange && std::any_of(wanted.begin(), wanted.end(), isLaid)) {
            if (std::any_of(held.begin(), held.end(), isLaid)) // otherwise it is told that the file has none
                file.AddWarning(0, {}, Check::tr("none of the plies is one that the model has to output"));
            return;
        }
        for (size_t j = 0; j < held.size(); ++j) {
            if (wantedOf[j] == none && held[j].isLaid)
                file.AddWarning(held[j].line, held[j].name, Check::tr("the model has no such ply to output here"));
        }
        int line = held.empty() ? 0 : held.front().line;
        for (size_t i = 0; i < wanted.size(); ++i) {
            if (heldOf[i] != none)
                line = std::max(held[heldOf[i]].line, held[heldOf[i]].endLine);
            else if (wanted[i].isLaid)
                file.AddWarning(
                    line, wanted[i].name,
                    Check::tr("the ply is missing here, it is number %1 in the model").arg(wanted[i].place));
        }
    }

    CheckPairs GetPairs() const
    {
        CheckPairs pairs;
        for (size_t i = 0; i < wanted.size(); ++i) {
            if (heldOf[i] != none)
                pairs.emplace_back(i, heldOf[i]);
        }
        if (wanted.size() < model.plies.size() && held.size() < file.plies.size())
            pairs.emplace_back(wanted.size(), held.size());
        return pairs;
    }

    CheckedFile& file;
    const CheckedModel& model;
    const std::vector<Name> wanted; //!< plies of the model
    const std::vector<Name> held;   //!< plies of the file
    std::vector<size_t> heldOf;
    std::vector<size_t> wantedOf;
};
} // namespace

bool CheckedModel::HasBoundary(const CheckPly& ply) const
{
    return std::any_of(ply.curves.begin(), ply.curves.end(),
                       [&](size_t curve) { return file->curves[curve].kind == CheckCurveKind::Boundary; });
}

CheckPairs PairPlies(CheckedFile& file, const CheckedModel& model)
{
    return Pairing(file, model).Run();
}

#include "reader/ZETLaserReaderComposites.h"
#include "tests/reader/ReaderModel.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{

using Extras = QList<ZETLaserExtraGeometry*>;

/*! The walk as it is defined, without a thought for speed: each node searches all its descendants, and membership is a
 *  search through the selection. It gives the tree as ReaderModel::Tree does. */
class PlainWalk
{
public:
    explicit PlainWalk(const ZETLaserOptions& jobOptions)
        : options(jobOptions)
    {
    }

    QString Read()
    {
        ZETCompRoot* const root = options.GetCompRoot();
        for (ZETFeatObject* feature : root->GetAllChildren()) {
            if (auto* const extra = qobject_cast<ZETLaserExtraGeometry*>(feature); IsOf(extra, 0))
                allPlies.append(extra);
        }
        QStringList groups;
        for (ZETFeatObject* child : root->GetChildren()) {
            if (auto* const layup = qobject_cast<ZETCompLayup*>(child))
                ReadLayup(layup, groups);
            else
                Meet(child, rootLevel);
        }
        return root->GetLabel() + u'[' + groups.join(u' ') + u']';
    }

    QList<ZETMatMaterial*> materials;

private:
    struct Level {
        Extras parentOnly;
        ZETLaserExtraGeometry* untilNext = nullptr;
        Extras pliesBelow;
    };

    static bool IsOf(const ZETLaserExtraGeometry* extra, int scope) { return extra && extra->GetScope() == scope; }

    static void Meet(ZETFeatObject* child, Level& level)
    {
        auto* const extra = qobject_cast<ZETLaserExtraGeometry*>(child);
        if (IsOf(extra, 2))
            level.untilNext = extra;
        if (IsOf(extra, 1))
            level.pliesBelow.append(extra);
    }

    static Level Open(const ZETFeatObject& node)
    {
        Level level;
        for (ZETFeatObject* child : node.GetChildren()) {
            if (auto* const extra = qobject_cast<ZETLaserExtraGeometry*>(child); IsOf(extra, 3))
                level.parentOnly.append(extra);
        }
        return level;
    }

    bool IsSelected(const ZETCompPlyBase* ply) const { return options.GetPlies().contains(ply); }

    bool HasSelected(const ZETFeatObject& node) const
    {
        for (ZETFeatObject* feature : node.GetAllChildren()) {
            const auto* const ply = qobject_cast<ZETCompPlyBase*>(feature);
            if (ply && IsSelected(ply))
                return true;
        }
        return false;
    }

    static QString Group(const ZETFeatObject& node, const QStringList& children)
    {
        return node.GetLabel() + u'[' + children.join(u' ') + u']';
    }

    QString Leaf(const ZETFeatObject& node, const QList<const Level*>& below, const QList<const Level*>& levels) const
    {
        QStringList names;
        const auto add = [&](const ZETLaserExtraGeometry* extra) { names << extra->GetLabel(); };
        if (options.GetOutputExtraGeometry() != 0) {
            std::for_each(allPlies.begin(), allPlies.end(), add);
            for (const Level* level : below)
                std::for_each(level->pliesBelow.begin(), level->pliesBelow.end(), add);
            for (const Level* level : levels) {
                if (level->untilNext)
                    add(level->untilNext);
            }
            for (const Level* level : levels) {
                if (level != &rootLevel)
                    std::for_each(level->parentOnly.begin(), level->parentOnly.end(), add);
            }
        }
        return node.GetLabel() + u'(' + names.join(u' ') + u')';
    }

    void ReadLayup(ZETCompLayup* layup, QStringList& out)
    {
        if (!HasSelected(*layup))
            return;
        layupLevel = Open(*layup);
        QStringList groups;
        for (ZETFeatObject* child : layup->GetChildren()) {
            if (auto* const sequence = qobject_cast<ZETCompSequence*>(child))
                ReadSequence(sequence, groups);
            else
                Meet(child, layupLevel);
        }
        out << Group(*layup, groups);
    }

    void ReadSequence(ZETCompSequence* sequence, QStringList& out)
    {
        if (!HasSelected(*sequence))
            return;
        sequenceLevel = Open(*sequence);
        QStringList groups;
        for (ZETFeatObject* child : sequence->GetChildren()) {
            if (auto* const ply = qobject_cast<ZETCompPly*>(child))
                ReadPly(ply, groups);
            else
                Meet(child, sequenceLevel);
        }
        if (options.GetNestPliesWithinSequence())
            out << Group(*sequence, groups);
        else
            out << groups;
    }

    void ReadPly(ZETCompPly* ply, QStringList& out)
    {
        ZETMatMaterial* const material = ply->GetMaterials().value(0);
        if (material && !materials.contains(material))
            materials.append(material);
        plyLevel = Open(*ply);
        for (ZETFeatObject* child : ply->GetChildren())
            Meet(child, plyLevel);
        auto* const subdivision = qobject_cast<ZETCompSubdivision*>(ply->GetIncludedStrategyOrSubdivision(nullptr));
        const bool isSkipped = subdivision && options.GetSkipParentPlyWithSubPlies() != 0;
        if (!isSkipped && IsSelected(ply))
            out << Leaf(*ply, {&rootLevel, &layupLevel, &sequenceLevel},
                        {&rootLevel, &layupLevel, &sequenceLevel, &plyLevel});
        if (subdivision)
            ReadSubdivision(subdivision, out);
    }

    void ReadSubdivision(ZETCompSubdivision* subdivision, QStringList& out)
    {
        Level level = Open(*subdivision);
        for (ZETFeatObject* child : subdivision->GetChildren()) {
            auto* const subPly = qobject_cast<ZETCompSubPly*>(child);
            if (!subPly)
                Meet(child, level);
            else if (IsSelected(subPly)) {
                Level own = Open(*subPly);
                for (ZETFeatObject* inner : subPly->GetChildren())
                    Meet(inner, own);
                out << Leaf(*subPly, {&rootLevel, &layupLevel, &sequenceLevel, &plyLevel, &level},
                            {&rootLevel, &layupLevel, &sequenceLevel, &plyLevel, &level, &own});
            }
        }
    }

    const ZETLaserOptions& options;
    Extras allPlies;
    Level rootLevel;
    Level layupLevel;
    Level sequenceLevel;
    Level plyLevel;
};

/*! Makes up the text of a model. */
class RandomText
{
public:
    explicit RandomText(QRandomGenerator& generator)
        : random(generator)
    {
    }

    QString Make()
    {
        return Children(u"layup"_s, 3, [this] { return Layup(); });
    }

private:
    QString Label(QChar letter) { return letter + QString::number(++count); }

    QString Extra()
    {
        static const QStringList scopes{u"all"_s, u"below"_s, u"until"_s, u"parent"_s};
        return u"extra "_s + Label(u'X') + u':' + scopes.at(random.bounded(4)) + u' ';
    }

    /*! Up to \a most nodes of one kind, with extra geometry, some of it in folders, strewn between them. */
    template <typename Content>
    QString Children(const QString& kind, int most, Content content)
    {
        QString text;
        const int nodes = random.bounded(most + 1);
        for (int i = 0; i <= nodes; ++i) {
            while (random.bounded(3) == 0)
                text += random.bounded(5) == 0 ? u"folder "_s + Label(u'F') + u" { "_s + Extra() + u"} "_s : Extra();
            if (i < nodes)
                text += kind + u' ' + Label(kind.at(0).toUpper()) + u" { "_s + content() + u"} "_s;
        }
        return text;
    }

    QString Layup()
    {
        return Children(u"sequence"_s, 3, [this] { return Sequence(); });
    }
    QString Sequence()
    {
        return Children(u"ply"_s, 4, [this] { return Ply(); });
    }
    QString Ply()
    {
        switch (random.bounded(4)) {
        case 0:
            return Children(u"strategy"_s, 1, [] { return QString(); });
        case 1:
            return Children(u"pieces"_s, 2, [this] { return Pieces(); });
        case 2:
            return Children(u"strategy"_s, 1, [] { return QString(); }) +
                   Children(u"pieces"_s, 1, [this] { return Pieces(); });
        default:
            return QString();
        }
    }
    QString Pieces()
    {
        return Children(u"subply"_s, 3, [this] { return Children(u"strategy"_s, 1, [] { return QString(); }); });
    }

    QRandomGenerator& random;
    int count = 0;
};

void GiveMaterials(ReaderModel& model, QRandomGenerator& random)
{
    const QList<ZETMatMaterial*> all{model.AddMaterial(u"A"_s), model.AddMaterial(u"B"_s), model.AddMaterial(u"C"_s)};
    for (ZETFeatObject* feature : model.root->GetAllChildren()) {
        if (auto* const ply = qobject_cast<ZETCompPly*>(feature); ply && random.bounded(3) != 0)
            ZETOpenComposites::SetMaterials(*ply, {all.at(random.bounded(3)), all.at(random.bounded(3))});
    }
}

/*! Selects some plies while the parents of sub-plies can be selected, and skips those afterwards or not. */
void SelectSome(ReaderModel& model, QRandomGenerator& random)
{
    QStringList labels;
    const int share = random.bounded(5);
    for (const ZETCompPlyBase* ply : model.options.GetPlies()) {
        if (random.bounded(4) < share)
            labels << ply->GetLabel();
    }
    model.Select(labels);
    model.options.SetSkipParentPlyWithSubPlies(random.bounded(2));
    model.options.SetNestPliesWithinSequence(random.bounded(2) != 0);
    model.options.SetOutputExtraGeometry(random.bounded(8));
}

} // namespace

class TestReaderRandomTrees : public QObject
{
    Q_OBJECT

private slots:
    void theTreeIsThatOfThePlainWalk_data();
    void theTreeIsThatOfThePlainWalk();
};

void TestReaderRandomTrees::theTreeIsThatOfThePlainWalk_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestReaderRandomTrees::theTreeIsThatOfThePlainWalk()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    int plies = 0;
    for (int round = 0; round < 250; ++round) {
        const QString text = RandomText(random).Make();
        ReaderModel model(text);
        GiveMaterials(model, random);
        SelectSome(model, random);
        PlainWalk plain(model.options);
        const QString expected = plain.Read();
        const bool found = model.Read();
        QVERIFY2(model.Tree() == expected,
                 qPrintable(text + u"\nread     "_s + model.Tree() + u"\nexpected "_s + expected));
        QCOMPARE(found, expected != u"Part[]"_s);
        QCOMPARE(model.materials, plain.materials);
        plies += static_cast<int>(model.options.GetPlies().size());
    }
    QVERIFY2(plies > 500, "the models hold something to select");
}

QTEST_GUILESS_MAIN(TestReaderRandomTrees)
#include "TestReaderRandomTrees.moc"

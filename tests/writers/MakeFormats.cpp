#include "tests/writers/MakeFormats.h"

#include <QHash>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

TestRecord ReadLine(QString line, int decimals)
{
    static QHash<int, QRegularExpression> forms; // made once: there are very many lines
    QRegularExpression& form = forms[decimals];
    if (form.pattern().isEmpty())
        form.setPattern(uR"(-?\d+\.\d{%1}(?![\d.]))"_s.arg(decimals));
    QList<double> numbers;
    auto matches = form.globalMatch(line);
    while (matches.hasNext())
        numbers += matches.next().captured().toDouble();
    TestRecord record{line.replace(form, u"#"_s), {}};
    if (!numbers.isEmpty())
        record.points += numbers;
    return record;
}

namespace
{
using Job = TestRandomJob;

// Reading.

QList<TestRecord> ReadLines(const QByteArray& file, int decimals, QString* fault)
{
    QStringList lines = QString::fromUtf8(file).split(u'\n');
    if (lines.takeLast() != u""_s)
        *fault = u"the last line doesn't end"_s;
    QList<TestRecord> records;
    for (const auto& line : lines)
        records += ReadLine(line, decimals);
    return records;
}

QList<TestRecord> ReadXml(const QByteArray& file, int decimals, QString* fault)
{
    QList<TestRecord> records;
    QXmlStreamReader xml(file);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            QString line = xml.name().toString();
            for (const auto& attribute : xml.attributes()) {
                if (attribute.name() != "FILEDATE"_L1)
                    line += u" %1='%2'"_s.arg(attribute.name(), attribute.value());
            }
            records += ReadLine(line, decimals);
        } else if (xml.isEndElement()) {
            records += TestRecord{u'/' + xml.name().toString(), {}};
        } else if (xml.isCharacters() && !xml.isWhitespace()) {
            records += TestRecord{xml.text().toString(), {}};
        }
    }
    if (xml.hasError())
        *fault = u"line %1: %2"_s.arg(xml.lineNumber()).arg(xml.errorString());
    return records;
}

// Expectation.

/*! The records of one job. A format adds its words; those whose groups are layers and leaves share the walk. */
class Expectation
{
public:
    explicit Expectation(const Job& random)
        : job(random)
    {
    }
    virtual ~Expectation() = default;
    Q_DISABLE_COPY_MOVE(Expectation)

    QList<TestRecord> records;

    void ExpectGroups(const QList<Job::Group>& groups)
    {
        for (const auto& group : groups) {
            if (group.HasOutput())
                ExpectGroup(group);
        }
    }

protected:
    virtual void BeginGroup(const Job::Group&, bool) {}
    virtual void EndGroup(const Job::Group&, bool) {}
    virtual void BeginLeaf(const Job::Group&) {}
    virtual void EndLeaf(const Job::Group&) {}
    virtual void ExpectCurve(const Job::Curve& curve) = 0;
    virtual void ExpectTexts(const Job::Group& ply) = 0;

    virtual void ExpectGroup(const Job::Group& group)
    {
        const bool layer = !group.IsPly() && (group.kind != "layup"_L1 || job.nestSequences);
        BeginGroup(group, layer);
        ExpectGroups(group.groups);
        if (group.groups.isEmpty()) {
            BeginLeaf(group);
            if (group.IsPly() && job.rosetteFirst)
                ExpectTexts(group);
            for (const auto& curve : group.curves) {
                if (!curve.points.isEmpty())
                    ExpectCurve(curve);
            }
            if (group.IsPly() && !job.rosetteFirst)
                ExpectTexts(group);
            EndLeaf(group);
        }
        EndGroup(group, layer);
    }

    void Add(const QString& head) { records += TestRecord{head, {}}; }
    void Add(const QString& head, const QList<double>& numbers) { records += TestRecord{head, {numbers}}; }

    /*! The block of parameters of these types: a head with their count, and their texts. */
    void AddBlock(const Job::Group& group, const QList<int>& types, const QStringList& before, const QString& count,
                  const QString& behind = QString())
    {
        QStringList texts;
        for (const auto& parameter : group.parameters) {
            if (types.contains(parameter.type))
                texts += parameter.text;
        }
        if (texts.isEmpty())
            return;
        for (const auto& line : before)
            Add(line);
        Add(count + QString::number(texts.size()));
        for (const auto& text : std::as_const(texts))
            Add(text);
        if (!behind.isEmpty())
            Add(behind);
    }

    const Job& job;
};

class Virtek : public Expectation
{
public:
    explicit Virtek(const Job& random)
        : Expectation(random)
    {
        ExpectGroups(job.groups);
        Add(u"EOD"_s);
    }

protected:
    void BeginGroup(const Job::Group& group, bool layer) override
    {
        if (layer)
            Add(u"LAYER START "_s + group.name);
    }
    void EndGroup(const Job::Group& group, bool layer) override
    {
        if (layer)
            Add(u"LAYER END "_s + group.name);
    }
    void BeginLeaf(const Job::Group& group) override { Add(u"START "_s + group.name); }
    void EndLeaf(const Job::Group& group) override { Add(u"END "_s + group.name); }

    void ExpectCurve(const Job::Curve& curve) override
    {
        const auto points = job.GetWrittenPoints(curve);
        Add(u"P %1"_s.arg(points.size()));
        for (const auto& point : points)
            Add(point.size() > 3 ? u"# # #   # # #"_s : u"# # #"_s, point);
    }

    void ExpectTexts(const Job::Group& ply) override
    {
        AddBlock(ply, {0}, {}, u"I "_s);
        for (const auto& parameter : ply.parameters) {
            if (parameter.type == 1 || parameter.type == 3)
                Add(parameter.type == 1 ? u"L 1"_s : u"Q 1"_s);
            if (parameter.type == 2)
                Add(u"G 0 "_s + parameter.text);
            else if (parameter.type == 1 || parameter.type == 3 || parameter.type == 4)
                Add(parameter.text);
        }
        for (const auto& text : ply.texts) {
            Add(u"T 3 "_s + text.text);
            Add(u"# # #"_s, job.Place(text.origin));
            Add(u"# # #"_s, job.Place(text.origin + text.first * text.size));
            Add(u"# # #"_s, job.Place(text.origin + text.second));
        }
    }
};

class AssemblyGuidance : public Expectation
{
public:
    explicit AssemblyGuidance(const Job& random)
        : Expectation(random)
    {
        Add(u"$*PARTNO    "_s);
        Add(u"$*DOSNAME   random.PRT"_s);
        Add(job.inches ? u"$*UNITS     IN"_s : u"$*UNITS     MM"_s);
        Add(u"$*DISPLAYMODE WCAICT"_s);
        ExpectGroups(job.groups);
        Add(u"$*PARTNO    "_s);
    }

protected:
    static QString Safe(QString text) { return text.replace(u' ', u'_'); }

    void BeginGroup(const Job::Group& group, bool) override
    {
        if (group.IsPly())
            Add(u"$*PLY       "_s + Safe(group.name));
        else if (group.kind == "sequence"_L1)
            Add(u"$*SEQ       "_s + Safe(group.name));
        else if (group.kind == "layup"_L1)
            Add(u"$*PLYGROUP  "_s + Safe(group.name));
    }

    void ExpectCurve(const Job::Curve& curve) override
    {
        const auto points = job.GetWrittenPoints(curve);
        Add(u"PENUP"_s);
        for (qsizetype i = 0; i < points.size(); ++i) {
            Add(u"GOTO        # # #"_s + (points[i].size() > 3 ? u"  # # #"_s : u""_s), points[i]);
            if (i == 0)
                Add(u"PENDWN"_s);
        }
    }

    void ExpectTexts(const Job::Group& ply) override
    {
        for (const auto& parameter : ply.parameters) {
            if (parameter.type == 0 || parameter.type == 1)
                Add(u"$*MSG "_s + Safe(parameter.text));
            else if (parameter.type == 2)
                Add(u"$*DISPLAYGRAPHICS "_s + Safe(parameter.text));
            else if (parameter.type == 4)
                Add(Safe(parameter.text));
        }
        for (const auto& text : ply.texts) {
            Add(u"PENUP"_s);
            Add(u"GOTO        # # #"_s, job.Place(text.origin));
            Add(u"$*LASERTEXT # \""_s + Safe(text.text) + u'"', {text.size / (job.inches ? 25.4 : 1.0)});
        }
    }
};

class Lap : public Expectation
{
public:
    explicit Lap(const Job& random)
        : Expectation(random)
    {
        for (const auto& line : {u"#switch to red if any error occurs"_s, u"ALERT red"_s, u"#Identification"_s,
                                 u"ID_START"_s, u"ID_SYNTAX \"1.5\""_s, u"ID_END"_s, u"#Source: Vantrell Norvale"_s})
            Add(line);
        Add(job.inches ? u"PROJECTION_SCALE in"_s : u"PROJECTION_SCALE mm"_s);
        Add(u"PROJECTION_START \"Projection\""_s);
        Add(u"DRAWING_START \"\""_s);
        ExpectGroups(job.groups);
        Add(u"DRAWING_END"_s);
        Add(u"PROJECTION_END"_s);
    }

protected:
    void BeginGroup(const Job::Group& group, bool layer) override
    {
        if (!layer)
            return;
        Add(u"LAYER_START \""_s + group.name + u'"');
        Add(u"LAYER_COLOR Green"_s);
    }
    void EndGroup(const Job::Group&, bool layer) override
    {
        if (layer)
            Add(u"LAYER_END"_s);
    }

    void ExpectCurve(const Job::Curve& curve) override
    {
        Add(u"GROUP_START \"\""_s);
        Add(u"GROUP_COLOR Green"_s);
        Add(u"ENTITY_START \""_s + curve.name + u'"');
        Add(u"ENTITY_COLOR Green"_s);
        for (const auto& point : job.GetWrittenPoints(curve))
            Add(point.size() > 3 ? u"# # #   # # #"_s : u"# # #"_s, point);
        Add(u"ENTITY_END"_s);
        Add(u"GROUP_END"_s);
    }

    void ExpectTexts(const Job::Group& ply) override
    {
        for (const auto& parameter : ply.parameters) {
            if (parameter.type == 4)
                Add(parameter.text);
        }
    }
};

class Sl : public Expectation
{
public:
    explicit Sl(const Job& random)
        : Expectation(random)
    {
        ExpectGroups(job.groups);
        Add(u"EOF"_s);
    }

protected:
    void BeginGroup(const Job::Group& group, bool layer) override
    {
        if (layer)
            Add(u"GS "_s + group.name);
    }
    void EndGroup(const Job::Group&, bool layer) override
    {
        if (layer)
            Add(u"GE"_s);
    }
    void BeginLeaf(const Job::Group& group) override { BeginGroup(group, true); }
    void EndLeaf(const Job::Group& group) override { EndGroup(group, true); }

    void ExpectCurve(const Job::Curve& curve) override
    {
        const auto points = job.GetWrittenPoints(curve);
        Add(u"BG "_s + curve.name);
        Add(u"L %1 1"_s.arg(points.size()));
        for (const auto& point : points)
            Add(point.size() > 3 ? u"# # #   # # #  1"_s : u"# # #  0 0 0  1"_s, point);
        Add(u"E "_s + curve.name);
    }

    void ExpectTexts(const Job::Group& ply) override
    {
        AddBlock(ply, {0, 5}, {u"BG NOTE"_s}, u"N "_s, u"E NOTE"_s);
        for (const auto& parameter : ply.parameters) {
            if (parameter.type == 2) {
                Add(u"BG GRAPHIC"_s);
                Add(u"BMP 0 "_s + parameter.text);
                Add(u"E GRAPHIC"_s);
            } else if (parameter.type == 4) {
                Add(parameter.text);
            }
        }
        Add(u"BG "_s + ply.name + u" Text"_s);
        for (const auto& text : ply.texts)
            ExpectText(text);
        Add(u"E "_s + ply.name + u" Text"_s);
    }

private:
    void ExpectText(const Job::Text& text)
    {
        const QList<double> origin = InAxis(text.origin);
        const QList<double> d = Direction(origin, InAxis(text.origin + text.first));
        const auto upEnd = text.origin + text.second; // in the model, whatever the axis system is
        const QList<double> u = Direction(origin, {upEnd.GetX(), upEnd.GetY(), upEnd.GetZ()});
        const QList<double> n{d[1] * u[2] - d[2] * u[1], d[2] * u[0] - d[0] * u[2], d[0] * u[1] - d[1] * u[0]};
        QList<double> numbers = job.Place(text.origin);
        numbers += text.size / (job.inches ? 25.4 : 1.0);
        for (int row = 0; row < 3; ++row)
            numbers += {d[row], u[row], n[row]};
        Add(u"T # # # 0 # # # # # # # # # #  1  0.0 0.0 0.0  ~"_s + text.text, numbers);
    }

    QList<double> InAxis(const ZETMathPoint& point) const
    {
        return job.Turned(job.hasAxis ? point - job.axisOrigin : point - ZETMathPoint());
    }

    static QList<double> Direction(const QList<double>& from, const QList<double>& to)
    {
        const QList<double> way{to[0] - from[0], to[1] - from[1], to[2] - from[2]};
        const double length = std::hypot(way[0], way[1], way[2]);
        return {way[0] / length, way[1] / length, way[2] / length};
    }
};

class Lpt : public Expectation
{
public:
    explicit Lpt(const Job& random)
        : Expectation(random)
    {
        Add(u"XML"_s);
        Add(u"PART NAME='' STATUS='Vantrell' TOPLAYERS='%1' INVERTNORMALS='' HIGHESTPLY='50' USEASSIGNEDLASERS='0' "
            "DEFAULTLASER='0'"_s.arg(job.groups.size()));
        ExpectGroups(job.groups);
        Add(u"/PART"_s);
        Add(u"/XML"_s);
    }

protected:
    void BeginGroup(const Job::Group& group, bool layer) override
    {
        if (layer)
            Add(u"PLY NAME='"_s + group.name + u"' LASERNUMBER='0'"_s);
    }
    void EndGroup(const Job::Group&, bool layer) override
    {
        if (layer)
            Add(u"/PLY"_s);
    }
    void BeginLeaf(const Job::Group& group) override { BeginGroup(group, true); }
    void EndLeaf(const Job::Group& group) override { EndGroup(group, true); }

    void ExpectCurve(const Job::Curve& curve) override
    {
        Add(u"SUBPLY NAME='"_s + curve.name + u"' LASERNUMBER='0'"_s);
        int number = 0;
        for (const auto& point : job.GetWrittenPoints(curve)) {
            const QString normal = point.size() > 3 ? u" IVAL='#' JVAL='#' KVAL='#'"_s : u""_s;
            Add(u"POINT NUMBER='%1' XVAL='#' YVAL='#' ZVAL='#'"_s.arg(++number) + normal, point);
            Add(u"/POINT"_s);
        }
        Add(u"/SUBPLY"_s);
    }

    void ExpectTexts(const Job::Group& ply) override
    {
        ExpectBlock(ply, 0, u"INSTRUCTIONS"_s);
        ExpectBlock(ply, 5, u"NOTES"_s);
        for (const auto& text : ply.texts) {
            const auto third = text.origin + text.second;
            Add(u"TEXT NAME='%1' VALUE='"_s.arg(++textNumber) + text.text +
                    u"' PT1XVAL='#' PT1YVAL='#' PT1ZVAL='#' PT2XVAL='#' PT2YVAL='#' PT2ZVAL='#' PT3XVAL='#' "
                    "PT3YVAL='#' PT3ZVAL='#'"_s,
                job.Place(text.origin) + job.Place(text.origin + text.first * text.size) +
                    QList<double>{third.GetX(), third.GetY(), third.GetZ()});
            Add(u"/TEXT"_s);
        }
    }

private:
    void ExpectBlock(const Job::Group& ply, int type, const QString& element)
    {
        QString lines;
        for (const auto& parameter : ply.parameters) {
            if (parameter.type == type)
                lines += parameter.text + u'\n';
        }
        if (lines.isEmpty())
            return;
        Add(element);
        Add(lines);
        Add(u'/' + element);
    }

    int textNumber = 0;
};

/*! The N-lines of both users; in plain output with comments, in nesting output with the data of each ply. */
class Nlines : public Expectation
{
public:
    Nlines(const Job& random, bool nesting)
        : Expectation(random)
        , isNesting(nesting)
    {
        Add(u"N000-00-01M19(,1-1,,TOOL0,NEW)"_s);
        if (isNesting)
            Add(job.inches ? u"N000-00-01M19(UNITS=INCH)"_s : u"N000-00-01M19(UNITS=MM)"_s);
        Add(u"N000-00-02M19(2-1)"_s);
        ExpectGroups(job.groups);
        Add(Start() + u"-01-01M30"_s);
    }

protected:
    void ExpectGroup(const Job::Group& group) override
    {
        AddComment(u"GROUP START "_s + group.name);
        EnterLevel(group);
        if (group.IsPly()) {
            if (isNesting)
                AddNestingData(group);
            ExpectTexts(group);
        }
        ExpectGroups(group.groups);
        for (const auto& curve : group.curves) {
            if (!curve.points.isEmpty())
                ExpectCurve(curve);
        }
        AddComment(u"GROUP END "_s + group.name);
        if (group.IsPly())
            Add(Start() + u"-00-01M01"_s);
    }

    void ExpectCurve(const Job::Curve& curve) override
    {
        AddComment(u"CONTOUR START "_s);
        AddComment(u"CURVE START "_s + curve.name);
        // Each curve is in a contour of its own, so it has the number 1.
        Add(Start() + u"-01-01M11("_s + sequence + u';' + ply + (isNesting ? u";1)"_s : u"-1)"_s));
        for (const auto& point : curve.points)
            AddPoint(point);
        if (curve.closed)
            AddPoint(curve.points.first());
        AddComment(u"CURVE END "_s + curve.name);
        AddComment(u"CONTOUR END "_s);
    }

    void ExpectTexts(const Job::Group& group) override
    {
        AddBlock(group, {0}, {}, u"I "_s);
        for (const auto& parameter : group.parameters) {
            if (parameter.type == 4)
                Add(parameter.text);
        }
    }

private:
    QString Start() const { return u"N%1"_s.arg(number, 3, 10, QLatin1Char('0')); }

    void AddComment(const QString& text)
    {
        if (!isNesting)
            Add(u"N000-00-01M19("_s + text + u')');
    }

    void EnterLevel(const Job::Group& group)
    {
        if (group.IsPly())
            ++number;
        if (group.kind == "ply"_L1)
            ply = plyOnly = group.name;
        else if (group.kind == "subply"_L1)
            ply = plyOnly + u';' + group.name;
        else if (group.kind == "sequence"_L1)
            sequence = group.name;
        else if (group.kind == "layup"_L1)
            layup = group.name;
    }

    void AddNestingData(const Job::Group& group)
    {
        const QString start = Start() + u"-01-01M19("_s;
        Add(start + u"NESTSUBA="_s + sequence + u')');
        Add(start + u"NESTPART="_s + group.name + u')');
        Add(start + u"LAYUP="_s + layup + u')');
        Add(start + u"MATERIAL=)"_s);
        Add(start + u"DIRECTION=0)"_s);
        Add(start + u"NESTROTATION=0;NONE)"_s);
    }

    void AddPoint(const Job::Point& point)
    {
        const QString head = Start() + u"-01-01G01X#Y#Z#"_s;
        const QList<double> place = job.Place(point.hasOffset ? point.offset : point.position);
        if (job.normals)
            Add(head + u"I#J#K#"_s, place + job.Turned(point.normal));
        else
            Add(head, place);
    }

    bool isNesting;
    int number = 0;
    QString sequence;
    QString layup;
    QString ply;     // with the sub-ply
    QString plyOnly; // without it
};

template <typename Format>
QList<TestRecord> Expected(const Job& job)
{
    return Format(job).records;
}

template <bool isNesting>
QList<TestRecord> ExpectedNlines(const Job& job)
{
    return Nlines(job, isNesting).records;
}

/*! What a stub of the format \a name holds for every job. */
MakeFormat::Expect ExpectStub(const QString& name)
{
    return [name](const Job&) {
        return QList<TestRecord>{{u"LAYER START myData"_s, {}},
                                 {u"... this will become "_s + name + u" ply data ..."_s, {}},
                                 {u"Baser laser Group Name "_s, {}},
                                 {u"LAYER END myData"_s, {}}};
    };
}
} // namespace

QList<MakeFormat> MakeFormat::GetAll()
{
    return {
        {"Virtek", 0, 0, "random.ply", 6, Expected<Virtek>, ReadLines},
        {"LPT", 1, 0, "random.XML", 6, Expected<Lpt>, ReadXml},
        {"FARO", 2, 0, "random.XML", 6, Expected<Lpt>, ReadXml},
        {"LAP", 3, 0, "random.lpd", 3, Expected<Lap>, ReadLines},
        {"SL", 4, 0, "random.sl", 3, Expected<Sl>, ReadLines},
        {"Assembly Guidance", 5, 0, "random.PRT", 3, Expected<AssemblyGuidance>, ReadLines},
        {"Aligned Vision", 6, 0, "random.PRT", 3, Expected<AssemblyGuidance>, ReadLines},
        {"General Scanning", 7, 0, "random.PRT", 6, ExpectedNlines<false>, ReadLines},
        {"General Scanning, nesting", 7, 2, "random.PRT", 6, ExpectedNlines<true>, ReadLines},
        {"APT", 8, 0, "random.APT", 6, ExpectStub(u"APT"_s), ReadLines},
        {"APT_2", 9, 0, "random.APT", 6, ExpectStub(u"APT_2"_s), ReadLines},
        {"APT_SL", 10, 0, "random.APT", 6, ExpectStub(u"APT_SL"_s), ReadLines},
        {"Quilmon", 12, 0, "random.CPD", 6, ExpectedNlines<false>, ReadLines},
        {"Quilmon, nesting", 12, 2, "random.CPD", 6, ExpectedNlines<true>, ReadLines},
    };
}

QString MakeFormat::ToText(const TestRandomJob& job) const
{
    return u"filetype %1 type %2\n"_s.arg(fileType).arg(outputType) + job.ToText();
}

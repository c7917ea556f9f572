#include "render/components.h"
#include "render/models.h"
#include "render/outline.h"
#include "support/test.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

using namespace render;

namespace {

// What is wrong with a mesh that has to be closed, wound outwards and finite; nothing when all is
// well. Corners at one place (to 1/1000 mm) count as one.
QString FaultOf(const Mesh& mesh) {
    std::unordered_map<uint64_t, int> places;
    std::vector<int> ids;
    for (const Vertex& vertex : mesh.vertices) {
        if (!std::isfinite(vertex.at.x + vertex.at.y + vertex.at.z)) {
            return u"a corner at infinity"_s;
        }
        if (std::abs(Length(vertex.normal) - 1) > 0.01f) {
            return u"a normal of length %1"_s.arg(static_cast<double>(Length(vertex.normal)));
        }
        uint64_t place = 0;
        for (const float v : {vertex.at.x, vertex.at.y, vertex.at.z}) {
            place =
                place << 21 | (static_cast<uint64_t>(std::lround(v * 1000) + 0x100000) & 0x1FFFFF);
        }
        ids.push_back(places.try_emplace(place, static_cast<int>(places.size())).first->second);
    }
    // Each way along an edge needs one back: sorted, they lie side by side.
    struct Way {
        int low;
        int high;
        int direction;
        auto operator<=>(const Way&) const = default;
    };
    std::vector<Way> ways;
    double volume = 0;
    for (const Mesh::Triangle& t : mesh.triangles) {
        const std::array<int, 3> corner{ids[t[0]], ids[t[1]], ids[t[2]]};
        for (size_t k = 0; k < 3; ++k) {
            const int a = corner[k];
            const int b = corner[(k + 1) % 3];
            if (a != b) {
                ways.push_back({std::min(a, b), std::max(a, b), a < b ? 1 : -1});
            }
        }
        volume += static_cast<double>(
            Dot(mesh.vertices[t[0]].at, Cross(mesh.vertices[t[1]].at, mesh.vertices[t[2]].at)));
    }
    std::sort(ways.begin(), ways.end());
    for (size_t i = 0; i < ways.size();) {
        int balance = 0;
        const Way edge = ways[i];
        for (; i < ways.size() && ways[i].low == edge.low && ways[i].high == edge.high; ++i) {
            balance += ways[i].direction;
        }
        if (balance != 0) {
            return u"an edge with one side only"_s;
        }
    }
    return volume > 0 ? QString() : u"wound inside out"_s;
}

QString FaultOf(const Element& element) {
    for (size_t i = 0; i < element.pieces.size(); ++i) {
        if (const QString fault = FaultOf(element.pieces[i].mesh); !fault.isEmpty()) {
            return u"piece %1: %2"_s.arg(i).arg(fault);
        }
    }
    return element.pieces.empty() ? u"no pieces"_s : QString();
}

Vec3 SizeOf(QStringView family, const QString& name, const QString& value) {
    return AssemblyFor(family, Parameters().Set(name, value)).Bounds().Size();
}

}  // namespace

struct TestModels : Fixture {};

TEST(TestModels, ComponentsAreClosed) {
    for (int i = 0; i < static_cast<int>(ComponentKind::Count); ++i) {
        for (const float diameter : {3.0f, 60.0f}) {
            const Element element = Component(static_cast<ComponentKind>(i), diameter);
            QVERIFY2(FaultOf(element).isEmpty(), qPrintable(u"kind %1 of %2 mm, %3"_s.arg(i)
                                                                .arg(static_cast<double>(diameter))
                                                                .arg(FaultOf(element))));
            const Vec3 size = element.Bounds().Size();
            QVERIFY2(Length(size) > diameter * 0.2f && Length(size) < diameter * 20,
                     qPrintable(u"kind %1: size"_s.arg(i)));
        }
    }
}

TEST(TestModels, FamiliesAreClosed) {
    for (const FamilyModel& model : AllModels()) {
        for (const Element& element : AssemblyFor(model.slug, {}).elements) {
            QVERIFY2(FaultOf(element).isEmpty(),
                     qPrintable(QString::fromUtf16(model.slug) + u": "_s + FaultOf(element)));
        }
    }
}

TEST(TestModels, OddParametersGiveAFinitePart) {
    Each<QString> row;
    for (const char* value : {"0", "0,0001", "30", "1000", "99999", "M0x0", "", "x"}) {
        row(value, QString::fromLatin1(value));
    }
    for (const auto& [value] : row) {
        for (const FamilyModel& model : AllModels()) {
            Parameters parameters;
            for (const char16_t* name :
                 {u"saídas", u"circuitos", u"diâmetro", u"comprimento", u"curso", u"tipo",
                  u"volume", u"vias", u"rosca", u"haste", u"estrias", u"aro", u"cabo"}) {
                parameters.Set(QString::fromUtf16(name), value);
            }
            const Vec3 size = AssemblyFor(model.slug, parameters).Bounds().Size();
            QVERIFY2(std::isfinite(Length(size)) && Length(size) > 1,
                     qPrintable(QString::fromUtf16(model.slug)));
        }
    }
}

TEST(TestModels, LargerNumbersMakeLargerParts) {
    for (const auto& [family, axis, less, more] : Each<QString, QString, QString, QString>{
             {"chamber", "camara-simples", "tipo", "9", "36"},
             {"stroke", "cilindro-porta", "curso", "100", "250"},
             {"bore", "compressor-mono", "diâmetro", "75", "100"},
             {"litres", "reservatorio-ar", "volume", "5", "60"},
             {"thread", "niple", "rosca", "M12x1,5", "M22x1,5"},
             {"pipe", "valvula-retencao", "rosca", "1/4 NPTF", "3/8 NPTF"},
         }) {
        QVERIFY(Length(SizeOf(family, axis, less)) * 1.05f < Length(SizeOf(family, axis, more)));
    }
}

TEST(TestModels, ThreadsAreRead) {
    for (const auto& [text, diameter] : Each<QString, float>{
             {"metric", "M16x1,5", 16.0f},
             {"after words", ", M22x1,5", 22.0f},
             {"pipe", "3/8 NPTF", 17.1f},
             {"none", "", 5.0f},
         }) {
        QCOMPARE(Parameters().Set(u"rosca"_s, text).Thread(5), diameter);
    }
}

// The triangles cover the outline without its holes, once.
TEST(TestModels, TriangulationKeepsTheArea) {
    const auto points = [](const Corners& corners, bool clockwise) {
        std::vector<Vec2> line;
        for (const LinePoint& p : Rounded(corners, true)) {
            line.push_back(p.at);
        }
        if (clockwise) {
            std::reverse(line.begin(), line.end());
        }
        return line;
    };
    const auto area = [](const std::vector<Vec2>& line) {
        double twice = 0;
        for (size_t i = 0; i < line.size(); ++i) {
            twice += static_cast<double>(Cross(line[i], line[(i + 1) % line.size()]));
        }
        return twice / 2;
    };
    for (const int eyes : {1, 2, 3, 4, 6, 8}) {
        const std::vector<Vec2> outline = points(EaredDisc(40, eyes, 44, 9), false);
        std::vector<std::vector<Vec2>> holes{points(Circle(22), true)};
        for (int i = 0; i < eyes; ++i) {
            const float at = 2 * Pi * static_cast<float>(i) / static_cast<float>(eyes);
            holes.push_back(points(Moved(Circle(4), 44 * std::cos(at), 44 * std::sin(at)), true));
        }
        std::vector<Vec2> all = outline;
        double expected = area(outline);
        for (const auto& hole : holes) {
            all.insert(all.end(), hole.begin(), hole.end());
            expected += area(hole);
        }
        double covered = 0;
        for (const auto& t : Triangulated(outline, holes)) {
            const double piece = area({all[t[0]], all[t[1]], all[t[2]]});
            QVERIFY(piece > -0.01);
            covered += piece;
        }
        QVERIFY2(std::abs(covered - expected) < 0.01 * expected,
                 qPrintable(u"%1 eyes: %2 of %3"_s.arg(eyes).arg(covered).arg(expected)));
    }
}

#include "callouts.h"

#include "vec.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace render {
namespace {

// The figure screen's box. Blanks in front of a number push it to the right, each by as much.
constexpr QSize Box(33, 13);
constexpr double PushOfBlank = 1.5;
constexpr double DigitWidth = 6.2;

constexpr int Clearance = 3;  // between a box and what is drawn
constexpr int Border = 1;     // between a box and the picture's edge
constexpr int Directions = 24;
constexpr int Shortest = 13;  // lines
constexpr int Longest = 96;
constexpr double Fault = 1000;
constexpr int Rounds = 12;

struct Candidate {
    QPointF onPart;
    QPointF atNumber;
    QRect box;
    QRectF text;
    double cost = 0;
};

// Sums over rectangles of the pixels on which no number may stand.
class Occupied {
public:
    explicit Occupied(const Plan& plan) : width_(plan.size.width()), height_(plan.size.height()) {
        sums_.assign(static_cast<size_t>((width_ + 1) * (height_ + 1)), 0);
        for (int y = 0; y < height_; ++y) {
            int row = 0;
            for (int x = 0; x < width_; ++x) {
                const auto i = static_cast<size_t>(y * width_ + x);
                row += plan.elementOf[i] != 0 || plan.lines[i] != 0 ? 1 : 0;
                sums_[At(x + 1, y + 1)] = sums_[At(x + 1, y)] + row;
            }
        }
    }

    bool Free(const QRect& rect) const {
        const QRect r = rect & QRect(0, 0, width_, height_);
        return sums_[At(r.right() + 1, r.bottom() + 1)] - sums_[At(r.left(), r.bottom() + 1)] -
                   sums_[At(r.right() + 1, r.top())] + sums_[At(r.left(), r.top())] ==
               0;
    }

private:
    size_t At(int x, int y) const { return static_cast<size_t>(y * (width_ + 1) + x); }

    int width_;
    int height_;
    std::vector<int> sums_;
};

double Side(QPointF a, QPointF b, QPointF p) {
    return (b.x() - a.x()) * (p.y() - a.y()) - (b.y() - a.y()) * (p.x() - a.x());
}

bool Cross(QPointF a, QPointF b, QPointF c, QPointF d) {
    return (Side(a, b, c) > 0) != (Side(a, b, d) > 0) && (Side(c, d, a) > 0) != (Side(c, d, b) > 0);
}

bool Cuts(QPointF a, QPointF b, const QRectF& rect) {
    return rect.contains(a) || rect.contains(b) ||
           Cross(a, b, rect.topLeft(), rect.bottomRight()) ||
           Cross(a, b, rect.topRight(), rect.bottomLeft());
}

double DistanceTo(QPointF a, QPointF b, QPointF p) {
    const QPointF way = b - a;
    const double t = std::clamp(
        QPointF::dotProduct(p - a, way) / std::max(QPointF::dotProduct(way, way), 1e-9), 0.0, 1.0);
    const QPointF off = a + way * t - p;
    return std::sqrt(QPointF::dotProduct(off, off));
}

// What two callouts cost each other.
double Conflict(const Candidate& a, const Candidate& b) {
    double cost = 0;
    if (a.box.adjusted(-1, -1, 1, 1).intersects(b.box)) {
        cost += Fault;
    }
    if (Cross(a.onPart, a.atNumber, b.onPart, b.atNumber)) {
        cost += Fault;
    }
    for (const auto& [line, number] : {std::pair(&a, &b), std::pair(&b, &a)}) {
        if (Cuts(line->onPart, line->atNumber, number->text)) {
            cost += Fault;
        } else if (Cuts(line->onPart, line->atNumber, QRectF(number->box))) {
            cost += 10;
        }
        // Ends that nearly touch another line leave open which is whose.
        for (const QPointF end : {number->onPart, number->atNumber}) {
            if (DistanceTo(line->onPart, line->atNumber, end) < 3.5) {
                cost += 60;
            }
        }
    }
    return cost;
}

class Placer {
public:
    Placer(const Plan& plan, std::span<const QString> numbers, float slope)
        : plan_(plan), numbers_(numbers), occupied_(plan) {
        // Between straight up and square to the axis.
        const double turn = static_cast<double>(Radians(90 + slope * 0.6f));
        preferred_ = {std::cos(turn), -std::sin(turn)};
        along_ = {static_cast<double>(std::cos(Radians(slope))),
                  -static_cast<double>(std::sin(Radians(slope)))};
        CollectPixels();
    }

    Callouts Run() {
        for (size_t i = 0; i < numbers_.size(); ++i) {
            if (!numbers_[i].trimmed().isEmpty() && !pixels_[i].empty()) {
                elements_.push_back(i);
                candidates_.push_back(CandidatesOf(i));
            }
        }
        chosen_.assign(candidates_.size(), -1);
        // Those with the least room choose first.
        std::vector<size_t> order(candidates_.size());
        for (size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        std::stable_sort(order.begin(), order.end(), [this](size_t a, size_t b) {
            return candidates_[a].size() < candidates_[b].size();
        });
        for (int round = 0; round < Rounds; ++round) {
            bool changed = false;
            for (const size_t i : order) {
                changed |= Choose(i);
            }
            if (!changed) {
                break;
            }
        }
        return Result();
    }

private:
    void CollectPixels() {
        pixels_.resize(numbers_.size());
        for (int y = 0; y < plan_.size.height(); ++y) {
            for (int x = 0; x < plan_.size.width(); ++x) {
                if (const uint16_t element = plan_.At(x, y); element != 0) {
                    pixels_[element - 1U].push_back({x, y});
                }
            }
        }
    }

    static QPointF Direction(int index) {
        const double angle = 2 * static_cast<double>(Pi) * index / Directions;
        return {std::cos(angle), -std::sin(angle)};
    }

    // Where a line in this direction leaves the element: a little inside of its edge.
    QPoint AnchorOf(size_t element, QPointF direction) const {
        QPoint edge;
        double best = -std::numeric_limits<double>::max();
        QPointF centre;
        for (const QPoint pixel : pixels_[element]) {
            centre += pixel;
        }
        centre /= static_cast<double>(pixels_[element].size());
        for (const QPoint pixel : pixels_[element]) {
            const QPointF off = pixel - centre;
            const double far = QPointF::dotProduct(off, direction);
            const double aside = std::abs(off.x() * direction.y() - off.y() * direction.x());
            if (far - 0.6 * aside > best) {
                best = far - 0.6 * aside;
                edge = pixel;
            }
        }
        const int deepest =
            std::clamp(static_cast<int>(std::sqrt(pixels_[element].size()) / 8), 1, 5);
        for (int depth = deepest; depth > 0; --depth) {
            const QPoint inside = (QPointF(edge) - direction * depth).toPoint();
            if (Owner(inside) == static_cast<int>(element)) {
                return inside;
            }
        }
        return edge;
    }

    int Owner(QPoint p) const {
        return QRect(QPoint(), plan_.size).contains(p) ? plan_.At(p.x(), p.y()) - 1 : -1;
    }

    std::vector<Candidate> CandidatesOf(size_t element) const {
        std::vector<Candidate> list;
        std::vector<QPoint> anchors;
        for (int i = 0; i < Directions; i += 2) {
            const QPoint anchor = AnchorOf(element, Direction(i));
            if (std::find(anchors.begin(), anchors.end(), anchor) == anchors.end()) {
                anchors.push_back(anchor);
                for (int k = i - 4; k <= i + 4; ++k) {
                    AppendAlong(element, anchor, Direction(k), list);
                }
            }
        }
        return list;
    }

    void AppendAlong(size_t element, QPointF from, QPointF direction,
                     std::vector<Candidate>& list) const {
        const QString& number = numbers_[element];
        const double halfText = static_cast<double>(number.trimmed().size()) * DigitWidth / 2 + 2;
        const double halfHeight = 5.5;
        // From the number's middle to where its line ends.
        const double reach = std::min(halfText / std::max(std::abs(direction.x()), 1e-6),
                                      halfHeight / std::max(std::abs(direction.y()), 1e-6)) +
                             1;
        const double blanks = static_cast<double>(number.size() - number.trimmed().size());
        double over = 0;
        for (int length = 1; length <= Longest; ++length) {
            const QPointF end = from + direction * length;
            const int owner = Foreign(end.toPoint(), element);
            if (owner == Other) {
                return;
            }
            over += owner == Own ? 1 : 0;
            if (length < Shortest || (length - Shortest) % 3 != 0) {
                continue;
            }
            const QPointF middle = end + direction * reach;
            const QPointF corner =
                middle - QPointF(Box.width() / 2.0 + blanks * PushOfBlank, Box.height() / 2.0);
            const QRect box(QPoint(qRound(corner.x()), qRound(corner.y())), Box);
            if (!QRect(QPoint(), plan_.size)
                     .adjusted(Border, Border, -Border, -Border)
                     .contains(box) ||
                !occupied_.Free(box.adjusted(-1, -Clearance, 1, Clearance))) {
                continue;
            }
            Candidate c;
            c.onPart = from;
            c.box = box;
            // Box corners are whole pixels: the line follows the number, not the other way round.
            const QPointF moved = QPointF(box.topLeft()) - corner;
            c.atNumber = end + moved;
            c.text = QRectF(middle + moved - QPointF(halfText, halfHeight),
                            QSizeF(2 * halfText, 2 * halfHeight));
            const double lean =
                std::abs(direction.x() * preferred_.y() - direction.y() * preferred_.x());
            const double axial = std::abs(QPointF::dotProduct(direction, along_));
            c.cost = length + 14 * lean + 30 * axial * axial * axial * axial + 1.5 * over +
                     0.35 * std::max(0, length - 30);
            list.push_back(c);
        }
    }

    enum : int { Nobody, Own, Other };

    // Whose the pixel is; what lies right beside another element counts as that one's.
    int Foreign(QPoint p, size_t element) const {
        bool own = false;
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                const int owner = Owner(p + QPoint(dx, dy));
                if (owner == static_cast<int>(element)) {
                    own = true;
                } else if (owner >= 0 && Owner(p) != static_cast<int>(element)) {
                    return Other;
                }
            }
        }
        return own ? Own : Nobody;
    }

    double CostOf(size_t i, const Candidate& candidate) const {
        double cost = candidate.cost;
        for (size_t k = 0; k < chosen_.size(); ++k) {
            if (k != i && chosen_[k] >= 0) {
                cost += Conflict(candidate, Chosen(k));
            }
        }
        return cost;
    }

    bool Choose(size_t i) {
        int best = -1;
        double least = std::numeric_limits<double>::max();
        for (size_t c = 0; c < candidates_[i].size(); ++c) {
            if (candidates_[i][c].cost >= least) {
                continue;
            }
            if (const double cost = CostOf(i, candidates_[i][c]); cost < least) {
                least = cost;
                best = static_cast<int>(c);
            }
        }
        const bool changed = best != chosen_[i];
        chosen_[i] = best;
        return changed;
    }

    const Candidate& Chosen(size_t i) const {
        return candidates_[i][static_cast<size_t>(chosen_[i])];
    }

    Callouts Result() const {
        Callouts result;
        for (size_t i = 0; i < chosen_.size(); ++i) {
            if (chosen_[i] < 0) {
                ++result.faults;
                continue;
            }
            const Candidate& c = Chosen(i);
            for (size_t k = 0; k < i; ++k) {
                if (chosen_[k] >= 0 && Conflict(c, Chosen(k)) >= Fault) {
                    ++result.faults;
                }
            }
            result.all.push_back({elements_[i], c.box, c.onPart, c.atNumber});
        }
        return result;
    }

    const Plan& plan_;
    std::span<const QString> numbers_;
    Occupied occupied_;
    QPointF preferred_;
    QPointF along_;
    std::vector<std::vector<QPoint>> pixels_;
    std::vector<size_t> elements_;
    std::vector<std::vector<Candidate>> candidates_;
    std::vector<int> chosen_;
};

}  // namespace

Callouts PlaceCallouts(const Plan& plan, std::span<const QString> numbers, float slope) {
    return Placer(plan, numbers, slope).Run();
}

}  // namespace render

#include "platform/sql/plan.h"

#include "platform/sql/collation.h"
#include "platform/sql/parser.h"
#include "platform/sql/searchshape.h"
#include "platform/sql/writer.h"

#include <algorithm>
#include <vector>

namespace sql {

namespace {

// So few rows that each may cost its way into the other tables before the first one is shown.
constexpr qint64 Handful = 64;

// A walk along the order wanted, past rows that have no partner, is let be this long for the rows
// of a screen: some milliseconds, and over a network as many pages as a hundred partners of their
// own would cost.
constexpr qint64 ScreenRows = 24;
constexpr qint64 LongestWalk = 5000;

// From where the rows of an arm come.
enum class Drive {
    Order,        // the table, in the order wanted or in any; conditions on the way
    Range,        // few rows of the table, found by one condition, then sorted
    Joined,       // the joined table, in its order; conditions on the way
    JoinedKey,    // the same, in the order of what the join compares, which is the order wanted
    JoinedRange,  // few rows of the joined table, then sorted
    Lonely,       // rows of the table without a partner
};

struct Step {
    const Arm* arm;
    Drive drive;
    const Term* range;    // condition that finds the rows, or null
    bool paired = false;  // only rows with a partner
};

class Planner {
public:
    Planner(const Schema& schema, const Count& count, Accents accents)
        : schema_(schema), count_(count), accents_(accents) {}

    // False when the query has not the shape.
    bool Plan(const Query& query);
    Translation Take() { return std::move(translation_); }

private:
    using Ordinals = std::vector<std::size_t>;

    bool PlanArms(std::vector<const Arm*> arms, Ordinals order);
    bool PlanConstant(const std::vector<const Arm*>& arms, const Ordinals& order);
    bool PlanByJoined(const std::vector<const Arm*>& arms, const Ordinals& order);
    Step StepByTable(const Arm& arm, const Expr* key);
    Step StepByJoined(const Arm& arm);
    Step StepLonely(const Arm& arm);
    // A condition that finds few rows, and how many; or null.
    struct Found {
        const Term* term = nullptr;
        qint64 rows = 0;
    };
    Found Few(const Arm& arm, bool joined, const Expr* except);
    qint64 CountOf(const Arm& arm, const Term& term);
    bool IsShortWalk(const Arm& arm, qint64 partners);

    void Write(const std::vector<Step>& steps, const Ordinals& order);
    void WriteStep(Writer& writer, const Step& step, std::size_t key, bool hidden);
    void WriteFrom(Writer& writer, const Step& step);
    void WriteConditions(Writer& writer, const Step& step);
    void WriteStrict(Writer& writer, const Step& step);
    bool HasStrict(const Step& step) const;

    const Schema& schema_;
    const Count& count_;
    Accents accents_;
    std::vector<Arm> arms_;
    Translation translation_;
};

bool Planner::Plan(const Query& query) {
    for (std::size_t i = 0; i < query.arms.size(); ++i) {
        const Query::Arm& part = query.arms[i];
        if (!part.select || (i > 0 && !part.all)) {
            return false;
        }
        std::optional<Arm> arm = TakeApart(*part.select, schema_);
        if (!arm || arm->select->items.size() != query.arms[0].select->items.size()) {
            return false;
        }
        arms_.push_back(std::move(*arm));
    }
    Ordinals order;
    for (const OrderTerm& term : query.order) {
        const std::size_t ordinal = ToQString(term.expr->text).toUInt();
        if (term.descending || term.expr->kind != Expr::Kind::Number || ordinal < 1 ||
            ordinal > query.arms[0].select->items.size()) {
            return false;
        }
        order.push_back(ordinal);
    }
    std::vector<const Arm*> arms;
    for (const Arm& arm : arms_) {
        arms.push_back(&arm);
    }
    // A flag in every statement, so that they are alike; where nothing is tested on the way it
    // is 1.
    translation_.resultColumns = static_cast<int>(query.arms[0].select->items.size());
    return !order.empty() && PlanArms(arms, order);
}

bool Planner::PlanArms(std::vector<const Arm*> arms, Ordinals order) {
    const auto all = [&](auto test) {
        return std::all_of(arms.begin(), arms.end(),
                           [&](const Arm* arm) { return test(*arm, arm->Item(order.front())); });
    };
    if (!order.empty()) {
        if (all([](const Arm&, const Expr& key) { return key.kind == Expr::Kind::Text; })) {
            return PlanConstant(arms, order);
        }
        if (!all([](const Arm&, const Expr& key) { return key.kind == Expr::Kind::Column; })) {
            return false;
        }
        if (all([](const Arm& arm, const Expr& key) { return arm.IsJoined(key); })) {
            return order.size() == 1 && PlanByJoined(arms, order);
        }
        if (!all([](const Arm& arm, const Expr& key) {
                return !arm.IsJoined(key) && arm.IsIndexed(key);
            })) {
            return false;
        }
        for (const std::size_t ordinal : order) {
            for (const Arm* arm : arms) {
                const Expr& key = arm->Item(ordinal);
                if (key.kind == Expr::Kind::Column && arm->IsJoined(key)) {
                    return false;
                }
            }
        }
    }
    std::vector<Step> steps;
    for (const Arm* arm : arms) {
        steps.push_back(StepByTable(*arm, order.empty() ? nullptr : &arm->Item(order.front())));
    }
    Write(steps, order);
    return true;
}

// Arms told apart by a constant follow each other; each value's arms are merged.
bool Planner::PlanConstant(const std::vector<const Arm*>& arms, const Ordinals& order) {
    const auto value = [&](const Arm* arm) { return ToQString(arm->Item(order.front()).text); };
    std::vector<const Arm*> sorted = arms;
    std::stable_sort(sorted.begin(), sorted.end(), [&](const Arm* a, const Arm* b) {
        return collation::Compare(value(a), value(b)) < 0;
    });
    const Ordinals rest(order.begin() + 1, order.end());
    for (auto begin = sorted.begin(); begin != sorted.end();) {
        const auto end = std::find_if(begin, sorted.end(), [&](const Arm* arm) {
            return collation::Compare(value(arm), value(*begin)) != 0;
        });
        if (!PlanArms({begin, end}, rest)) {
            return false;
        }
        begin = end;
    }
    return true;
}

// By a column that the join leaves Null: rows without a partner come first, then the others from
// the joined table's index, which has them in order.
bool Planner::PlanByJoined(const std::vector<const Arm*>& arms, const Ordinals& order) {
    std::vector<Step> lonely;
    std::vector<Step> paired;
    for (const Arm* arm : arms) {
        if (!NeedsPartner(*arm)) {
            lonely.push_back(StepLonely(*arm));
        }
        paired.push_back(StepByJoined(*arm));
    }
    if (!lonely.empty()) {
        Write(lonely, {});
    }
    Write(paired, order);
    return true;
}

qint64 Planner::CountOf(const Arm& arm, const Term& term) {
    Writer writer(schema_, accents_);
    const Names::Scope scope(writer.KnownNames(), *arm.select);
    writer.Raw("SELECT count(*) FROM (SELECT 1 FROM ");
    writer.WriteSource(term.joined ? *arm.joined : *arm.table);
    writer.Raw(" WHERE ");
    writer.Range(*term.expr);
    writer.Raw(" LIMIT " + std::to_string(CountLimit + 1) + ")");
    return count_(writer.Take());
}

// A condition, on another column than the one that gives the order, that finds few rows.
Planner::Found Planner::Few(const Arm& arm, bool joined, const Expr* except) {
    for (const Term& term : arm.terms) {
        const bool other = !except || !EqualWords(term.column->name, except->name);
        if (!term.range || term.joined != joined || !other) {
            continue;
        }
        const qint64 rows = CountOf(arm, term);
        if (rows <= CountLimit) {
            return {&term, rows};
        }
    }
    return {};
}

// As if the rows with a partner lay evenly among all. The highest number of a row stands for how
// many there are: that is one way down the tree, where counting is the whole of it.
bool Planner::IsShortWalk(const Arm& arm, qint64 partners) {
    const ColumnInfo* number = arm.info.RowNumber();
    if (!number || partners <= Handful) {
        return false;
    }
    Writer writer(schema_, accents_);
    writer.Raw("SELECT max(");
    writer.Name(number->name);
    writer.Raw(") FROM ");
    writer.WriteSource(*arm.table);
    return count_(writer.Take()) <= LongestWalk * partners / ScreenRows;
}

const Term* RangeOn(const Arm& arm, bool joined, const Expr* column) {
    for (const Term& term : arm.terms) {
        if (term.range && term.joined == joined &&
            (!column || EqualWords(term.column->name, column->name))) {
            return &term;
        }
    }
    return nullptr;
}

Step Planner::StepByTable(const Arm& arm, const Expr* key) {
    if (const Term* few = Few(arm, false, key).term) {
        return {&arm, Drive::Range, few};
    }
    const Term* range = RangeOn(arm, false, key);
    const auto [few, rows] = Few(arm, true, nullptr);
    if (few && rows <= Handful) {
        return {&arm, Drive::JoinedRange, few};
    }
    // What has no partner is not even passed.
    const bool byPartner = key && NeedsPartner(arm) &&
                           EqualWords(key->name, arm.tableColumn->name) &&
                           (!range || range->expr->kind == Expr::Kind::Like);
    if (byPartner) {
        return {&arm, Drive::JoinedKey, range, true};
    }
    if (few && !(key && IsShortWalk(arm, rows))) {
        return {&arm, Drive::JoinedRange, few};
    }
    return {&arm, Drive::Order, range};
}

Step Planner::StepByJoined(const Arm& arm) {
    if (const Term* few = Few(arm, false, nullptr).term) {
        return {&arm, Drive::Range, few, true};
    }
    return {&arm, Drive::Joined, RangeOn(arm, true, nullptr), true};
}

Step Planner::StepLonely(const Arm& arm) {
    const Term* few = Few(arm, false, nullptr).term;
    return {&arm, Drive::Lonely, few ? few : RangeOn(arm, false, nullptr)};
}

void Planner::Write(const std::vector<Step>& steps, const Ordinals& order) {
    Writer writer(schema_, accents_);
    // The engine walks an index in its order only where that very column is what it sorts by: the
    // partner's, which shows another spelling perhaps and is hidden.
    const bool hidden = std::any_of(steps.begin(), steps.end(), [](const Step& step) {
        return step.drive == Drive::JoinedKey;
    });
    for (std::size_t i = 0; i < steps.size(); ++i) {
        writer.Raw(i ? " UNION ALL " : "");
        WriteStep(writer, steps[i], order.empty() ? 0 : order.front(), hidden);
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool partner = hidden && i == 0;
        writer.Raw(i ? ", " : " ORDER BY ");
        writer.Raw(
            std::to_string(partner ? std::size_t(translation_.resultColumns) + 2 : order[i]));
    }
    translation_.statements.append(writer.Take());
    for (const QString& table : writer.Tables()) {
        if (!translation_.tables.contains(table)) {
            translation_.tables.append(table);
        }
    }
}

void Planner::WriteStep(Writer& writer, const Step& step, std::size_t key, bool hidden) {
    writer.Raw("SELECT ");
    const Select& select = *step.arm->select;
    const Names::Scope scope(writer.KnownNames(), select);
    const bool sorted = step.drive == Drive::Range || step.drive == Drive::JoinedRange;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        const SelectItem& item = select.items[i];
        const bool column = item.expr->kind == Expr::Kind::Column;
        if (column && step.drive == Drive::Lonely && step.arm->IsJoined(*item.expr)) {
            writer.Raw("NULL AS ");
            writer.Name(item.alias.empty() ? item.expr->name : item.alias);
        } else {
            // The sign keeps the engine from walking the whole index instead of sorting few rows.
            writer.Raw(sorted && !hidden && i + 1 == key ? "+" : "");
            writer.WriteItem(item, i, Writer::Naming::Fixed);
        }
        writer.Raw(", ");
    }
    if (HasStrict(step)) {
        writer.Raw("(");
        WriteStrict(writer, step);
        writer.Raw(")");
    } else {
        writer.Raw("1");
    }
    writer.Raw(" AS dao_flag");
    if (hidden) {
        writer.Raw(sorted ? ", +" : ", ");
        writer.Value(step.drive == Drive::JoinedKey ? *step.arm->joinedColumn
                                                    : step.arm->Item(key));
        writer.Raw(" AS dao_key");
    }
    WriteFrom(writer, step);
    WriteConditions(writer, step);
}

void Planner::WriteFrom(Writer& writer, const Step& step) {
    const Arm& arm = *step.arm;
    writer.Raw(" FROM ");
    if (!arm.joined || step.drive == Drive::Lonely) {
        writer.WriteSource(*arm.table);
        return;
    }
    // Left joins where a row without a partner must come by, so that it can carry the pulse. The
    // other join keeps the engine from turning the tables round.
    const bool fromJoined = step.drive != Drive::Order && step.drive != Drive::Range;
    const bool few = step.drive == Drive::Range || step.drive == Drive::JoinedRange;
    const bool outer = !(few && (step.paired || NeedsPartner(*step.arm)));
    writer.WriteSource(fromJoined ? *arm.joined : *arm.table);
    writer.Raw(outer ? " LEFT JOIN " : " CROSS JOIN ");
    writer.WriteSource(fromJoined ? *arm.table : *arm.joined);
    writer.Raw(" ON ");
    writer.Value(*arm.tableColumn);
    writer.Raw(" = ");
    writer.Value(*arm.joinedColumn);
}

bool Planner::HasStrict(const Step& step) const {
    return !step.arm->terms.empty() || step.paired || step.drive == Drive::Lonely;
}

void Planner::WriteConditions(Writer& writer, const Step& step) {
    std::string_view separator = " WHERE ";
    if (step.range) {
        writer.Raw(separator);
        writer.Raw("(");
        if (step.drive == Drive::JoinedKey) {
            writer.LikePrefix(*step.arm->joinedColumn, step.range->expr->args[1]->text);
        } else {
            writer.Range(*step.range->expr);
        }
        writer.Raw(")");
        separator = " AND ";
    }
    // Asked of a row before its partner in the table is looked for.
    for (const Term& term : step.arm->terms) {
        if (step.drive == Drive::JoinedKey && term.joined) {
            writer.Raw(separator);
            writer.Raw("(");
            writer.Test(*term.expr);
            writer.Raw(" OR dao_pulse())");
            separator = " AND ";
        }
    }
    if (!HasStrict(step)) {
        return;
    }
    writer.Raw(separator);
    writer.Raw("(");
    WriteStrict(writer, step);
    const bool few = step.drive == Drive::Range || step.drive == Drive::JoinedRange;
    writer.Raw(few ? ")" : " OR dao_pulse())");
}

// Everything that makes a row one of the result, in a form that no index serves.
void Planner::WriteStrict(Writer& writer, const Step& step) {
    const Arm& arm = *step.arm;
    std::string_view separator;
    if (step.drive == Drive::Lonely) {
        writer.Raw("NOT EXISTS (SELECT 1 FROM ");
        writer.WriteSource(*arm.joined);
        writer.Raw(" WHERE ");
        writer.Value(*arm.joinedColumn);
        writer.Raw(" = ");
        writer.Value(*arm.tableColumn);
        writer.Raw(")");
        separator = " AND ";
    }
    if (step.paired) {
        const bool fromJoined = step.drive == Drive::Joined || step.drive == Drive::JoinedKey;
        writer.Value(fromJoined ? *arm.tableColumn : *arm.joinedColumn);
        writer.Raw(" IS NOT NULL");
        separator = " AND ";
    }
    for (const Term& term : arm.terms) {
        writer.Raw(separator);
        writer.Test(*term.expr);
        separator = " AND ";
    }
}

}  // namespace

Translation PlanQuery(const QString& text, const Schema& schema, const Count& count,
                      Accents accents, Literals literals) {
    const Command command = Parser::ParseCommand(text.toUtf8());
    if (const auto* query = std::get_if<QueryPtr>(&command.body)) {
        Planner planner(schema, count, accents);
        if (planner.Plan(**query)) {
            return planner.Take();
        }
    }
    return WriteCommand(command, schema, accents, literals);
}

}  // namespace sql

#pragma once

#include <QStringList>
#include <QTest>

#include <initializer_list>
#include <memory>
#include <tuple>
#include <vector>

// What takes one of these takes a literal in UTF-8 as well.
struct AnyText : QString {
    AnyText() = default;
    AnyText(const QString& text) : QString(text) {}
    AnyText(const char* utf8) : QString(QString::fromUtf8(utf8)) {}
};
struct AnyTexts : QStringList {
    AnyTexts() = default;
    AnyTexts(const QStringList& texts) : QStringList(texts) {}
    AnyTexts(std::initializer_list<AnyText> texts) : QStringList(texts.begin(), texts.end()) {}
};

template <typename Column>
struct TableValue {
    using Type = Column;
};
template <>
struct TableValue<QString> {
    using Type = AnyText;
};
template <>
struct TableValue<QStringList> {
    using Type = AnyTexts;
};

// Between two cases: the running class's cleanup() and init().
void StartAnew();

// A table of cases, each begun as a test function of its own is:
//     for (const auto& [text, length] : Each<QString, int>{
//              {"accents", "ação", 4},
//          }) {
// The loop ends with the first case that fails, whose name is told. Cases of one value need no
// name.
template <typename... Columns>
class Each {
public:
    struct Row {
        Row(const QByteArray& called, const typename TableValue<Columns>::Type&... given)
            : name(called), values(given...) {}
        template <typename Given>
        requires(sizeof...(Columns) == 1 && !std::is_same_v<Given, Row>) Row(const Given& given)
            : values(typename TableValue<Columns>::Type(given)...) {
            const std::unique_ptr<char[]> text(QTest::toString(std::get<0>(values)));
            name = text.get();
        }
        QByteArray name;
        std::tuple<Columns...> values;
    };

    Each() = default;
    Each(std::initializer_list<Row> rows) : rows_(rows) {}
    ~Each() {
        if (current_ < rows_.size() && QTest::currentTestFailed()) {
            qWarning("in case \"%s\"", rows_[current_].name.constData());
        }
    }
    Q_DISABLE_COPY_MOVE(Each)

    // One more, for cases that are computed.
    void operator()(const QByteArray& name, const typename TableValue<Columns>::Type&... values) {
        rows_.emplace_back(name, values...);
    }

    class Iterator {
    public:
        explicit Iterator(Each* table) : table_(table) {}
        const std::tuple<Columns...>& operator*() const { return table_->Now(); }
        Iterator& operator++() {
            if (++table_->current_ < table_->rows_.size()) {
                StartAnew();
            }
            return *this;
        }
        bool operator!=(std::nullptr_t) const { return table_->current_ < table_->rows_.size(); }

    private:
        Each* table_;
    };
    Iterator begin() { return Iterator(this); }
    std::nullptr_t end() { return nullptr; }

    // The name of the case that runs.
    const QByteArray& Name() const { return rows_[current_].name; }

private:
    const std::tuple<Columns...>& Now() const { return rows_[current_].values; }

    std::vector<Row> rows_;
    size_t current_ = 0;
};

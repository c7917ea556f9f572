#include "cases.h"

using namespace Qt::StringLiterals;

namespace bench {

QString CaseName(const QString& side, const Search& search, const OrderBy& order) {
    return side + u'/' + QString::fromUtf8(search.name) + u"/ORDER BY "_s +
           QString::fromUtf8(order.columns);
}

int Repetitions() {
    bool given = false;
    const int count = qEnvironmentVariableIntValue("BENCH_REPETITIONS", &given);
    return given && count > 0 ? count : 5;
}

}  // namespace bench

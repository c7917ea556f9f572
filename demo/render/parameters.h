#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace render {

// The places of a part's description with their values, such as {"saídas", "4 saídas"}.
class Parameters {
public:
    Parameters& Set(const QString& name, const QString& value);

    QString Text(QStringView name) const;  // empty when there is none
    bool Says(QStringView word) const;     // in any of the values
    // The first number in the value, or `otherwise`.
    float Number(QStringView name, float otherwise) const;
    // Outside diameter in mm of "M16x1,5", "1/4 NPTF" or "tubo 8 mm" under the name "rosca".
    float Thread(float otherwise) const;

private:
    std::vector<std::pair<QString, QString>> values_;
};

}  // namespace render

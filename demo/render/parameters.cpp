#include "parameters.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace render {
namespace {

float FirstNumber(const QString& text, float otherwise) {
    static const QRegularExpression number(u"\\d+(?:,\\d+)?"_s);
    const QRegularExpressionMatch match = number.match(text);
    return match.hasMatch() ? match.captured().replace(u',', u'.').toFloat() : otherwise;
}

// ANSI B1.20.3, outside diameters in mm.
struct PipeThread {
    QLatin1StringView name;
    float diameter;
};
constexpr std::array<PipeThread, 4> pipeThreads{{
    {"1/8"_L1, 10.3f},
    {"1/4"_L1, 13.7f},
    {"3/8"_L1, 17.1f},
    {"1/2"_L1, 21.3f},
}};

}  // namespace

Parameters& Parameters::Set(const QString& name, const QString& value) {
    values_.emplace_back(name, value);
    return *this;
}

QString Parameters::Text(QStringView name) const {
    const auto found = std::find_if(values_.begin(), values_.end(),
                                    [name](const auto& value) { return value.first == name; });
    return found == values_.end() ? QString() : found->second;
}

bool Parameters::Says(QStringView word) const {
    return std::any_of(values_.begin(), values_.end(),
                       [word](const auto& value) { return value.second.contains(word); });
}

float Parameters::Number(QStringView name, float otherwise) const {
    return FirstNumber(Text(name), otherwise);
}

float Parameters::Thread(float otherwise) const {
    const QString text = Text(u"rosca");
    if (const qsizetype m = text.indexOf(u'M'); m >= 0) {
        return FirstNumber(text.sliced(m), otherwise);
    }
    for (const PipeThread& thread : pipeThreads) {
        if (text.contains(thread.name)) {
            return thread.diameter;
        }
    }
    // A push-in tube needs a bore of about twice its diameter.
    return text.contains("tubo"_L1) ? FirstNumber(text, otherwise) * 1.8f : otherwise;
}

}  // namespace render

#include "photographs.h"

#include "assortment.h"
#include "platform/erro.h"
#include "render/models.h"
#include "render/photo.h"

#include <QDir>
#include <QImageWriter>
#include <QMap>
#include <QtConcurrentMap>

#include <exception>
#include <numeric>
#include <vector>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

// Of the frames on the screen, twice as wide as there: sharp on a large display too.
constexpr QSize PartPhoto(500, 390);
constexpr QSize GalleryPhoto(384, 240);
constexpr int Quality = 88;

struct Sitting {
    QString file;
    QString family;
    render::Parameters parameters;
    QSize size;
};

std::vector<Sitting> SittingsOf(const Assortment& assortment, int reduction) {
    QMap<QString, Sitting> looks;
    for (const Family& family : assortment.Families()) {
        const QString file = Assortment::GalleryPhotoOf(family);
        looks[file] = {file, QString::fromUtf16(family.slug), {}, GalleryPhoto / reduction};
    }
    for (const Construction& construction : assortment.Constructions()) {
        for (quint32 i = 0; i < construction.parts; ++i) {
            const PartModel model = assortment.ModelOf(construction, i);
            const QString file = assortment.PhotoOf(model);
            if (!looks.contains(file)) {
                looks[file] = {file, QString::fromUtf16(model.family->slug),
                               ParametersOf(assortment, model), PartPhoto / reduction};
            }
        }
    }
    return {looks.begin(), looks.end()};
}

}  // namespace

render::Parameters ParametersOf(const Assortment& assortment, const PartModel& model) {
    render::Parameters parameters;
    for (const auto& [name, value] : assortment.ValuesOf(model)) {
        parameters.Set(name, value);
    }
    return parameters;
}

void DrawAll(size_t count, const std::function<void(size_t)>& draw) {
    std::vector<size_t> indices(count);
    std::iota(indices.begin(), indices.end(), 0);
    std::vector<std::exception_ptr> failures(count);
    QtConcurrent::blockingMap(indices, [&](size_t i) {
        try {
            draw(i);
        } catch (...) {
            failures[i] = std::current_exception();
        }
    });
    for (const std::exception_ptr& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
}

void SavePicture(const QImage& picture, const QString& path, int quality) {
    QImageWriter writer(path);
    writer.setQuality(quality);
    if (!writer.write(picture)) {
        throw Erro(Erro::PathFileAccess, u"Não foi possível gravar \"%1\"."_s.arg(path));
    }
}

void DrawPhotos(const Assortment& assortment, const QString& folder, Pictures pictures) {
    if (pictures == Pictures::None) {
        return;
    }
    const QDir target(folder);
    const std::vector<Sitting> sittings =
        SittingsOf(assortment, pictures == Pictures::Small ? 4 : 1);
    DrawAll(sittings.size(), [&](size_t i) {
        const Sitting& sitting = sittings[i];
        const render::Assembly part = render::AssemblyFor(sitting.family, sitting.parameters);
        SavePicture(render::Photo(part, sitting.size), target.filePath(sitting.file), Quality);
    });
}

}  // namespace demo

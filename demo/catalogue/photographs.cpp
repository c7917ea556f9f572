#include "photographs.h"

#include "assortment.h"
#include "platform/erro.h"
#include "render/models.h"
#include "render/photo.h"

#include <QDir>
#include <QFile>
#include <QImageWriter>
#include <QMap>
#include <QtConcurrentMap>

#include <exception>
#include <map>
#include <numeric>
#include <span>
#include <vector>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

// What the frames on the screen measure on a display of 1920x1080.
constexpr QSize PartPhoto(450, 351);
constexpr QSize GalleryPhoto(346, 216);
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

void CopyFile(const QString& from, const QString& to) {
    if (!QFile::copy(from, to)) {
        throw Erro(Erro::PathFileAccess, u"Não foi possível gravar \"%1\"."_s.arg(to));
    }
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
    const auto assemblyOf = [&sittings](size_t i) {
        return render::AssemblyFor(sittings[i].family, sittings[i].parameters);
    };
    // Not every word of a part's text shows: a good quarter of the looks are one another's copies.
    std::vector<size_t> looks(sittings.size());
    DrawAll(sittings.size(), [&](size_t i) {
        looks[i] = qHashMulti(render::LookOf(assemblyOf(i)), sittings[i].size.width());
    });
    std::map<size_t, std::vector<size_t>> alike;
    for (size_t i = 0; i < looks.size(); ++i) {
        alike[looks[i]].push_back(i);
    }
    const std::vector<std::pair<size_t, std::vector<size_t>>> groups(alike.begin(), alike.end());
    DrawAll(groups.size(), [&](size_t group) {
        const std::vector<size_t>& same = groups[group].second;
        const QString file = target.filePath(sittings[same.front()].file);
        SavePicture(render::Photo(assemblyOf(same.front()), sittings[same.front()].size), file,
                    Quality);
        for (const size_t copy : std::span(same).subspan(1)) {
            CopyFile(file, target.filePath(sittings[copy].file));
        }
    });
}

}  // namespace demo

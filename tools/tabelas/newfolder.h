#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace tabelas {

// A folder that is filled aside and then put in its place as a whole: whoever looks finds nothing
// there or all of it. What was not placed goes with the object.
class NewFolder {
public:
    // `target`: in the platform's form; must not be there, or be empty. Throws Erro 75 and 76 with
    // words.
    explicit NewFolder(const QString& target);

    QString Path() const;  // where it is filled
    QString Target() const { return target_; }

    // Everything in it has reached the disk when this returns. Erro 61, 75.
    void Place();

private:
    QString target_;
    std::unique_ptr<QTemporaryDir> aside_;
};

}  // namespace tabelas

#include "models.h"

namespace render {

const std::vector<FamilyModel>& AllModels() {
    static const std::vector<FamilyModel> all = [] {
        std::vector<FamilyModel> models;
        for (const auto table :
             {ValveModels(), ControlValveModels(), ChamberModels(), CylinderModels(), WheelModels(),
              SupplyModels(), ElectricModels(), LineModels(), HoseModels()}) {
            models.insert(models.end(), table.begin(), table.end());
        }
        return models;
    }();
    return all;
}

Assembly AssemblyFor(QStringView family, const Parameters& parameters) {
    for (const FamilyModel& model : AllModels()) {
        if (family == QStringView(model.slug)) {
            return model.make(parameters);
        }
    }
    return AssemblyFor(u"valvula-rele", parameters);
}

}  // namespace render

#include "families.h"

namespace render {

Assembly AssemblyFor(QStringView family, const Parameters& parameters) {
    for (const auto models : {ValveModels(), ControlValveModels(), ChamberModels(),
                              CylinderModels(), SupplyModels(), ElectricModels(), LineModels()}) {
        for (const FamilyModel& model : models) {
            if (family == QStringView(model.slug)) {
                return model.make(parameters);
            }
        }
    }
    return AssemblyFor(u"valvula-rele", parameters);
}

}  // namespace render

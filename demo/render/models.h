#pragma once

#include "assembly.h"
#include "parameters.h"

#include <QStringView>

#include <span>
#include <vector>

namespace render {

struct FamilyModel {
    const char16_t* slug;  // as demo::Family::slug
    Assembly (*make)(const Parameters& parameters);
};

std::span<const FamilyModel> ValveModels();
std::span<const FamilyModel> ControlValveModels();
std::span<const FamilyModel> ChamberModels();
std::span<const FamilyModel> CylinderModels();
std::span<const FamilyModel> WheelModels();
std::span<const FamilyModel> SupplyModels();
std::span<const FamilyModel> ElectricModels();
std::span<const FamilyModel> LineModels();
std::span<const FamilyModel> HoseModels();

const std::vector<FamilyModel>& AllModels();

// The part as it is delivered. A family without a model of its own gets a plain valve.
Assembly AssemblyFor(QStringView family, const Parameters& parameters);

}  // namespace render

// The pages, each beside those it belongs to, and what several of them say alike.
#pragma once

#include "masterdata/pages/page.h"

namespace qk::pages {

Page competition();
Page classYear();
Page shooters();
Page clubs();
Page teams();
Page teamGroups();
Page classes();
Page weapons();
Page disciplines();
Page combinations();
Page disciplineKeys();
Page registrations();
Page shooterGroups();
Page profiles();

inline const QString kUnused = "Steht im Wettkampf; Büro, Kasse und Kurzauswertung rechnen nicht damit.";

inline const RowSource kClub{"Verein", "ID", "%1.Name"};
inline const RowSource kTeam{"Mannschaften", "ID", "%1.MannName"};
inline const RowSource kClass{"Schützenklassen", "ID", "%1.Klasse"};
inline const RowSource kWeapon{"Waffen", "ID", "%1.KZ & ' ' & %1.Bezeichnung"};
inline const RowSource kDiscipline{"Disziplin", "ID", "%1.Name"};
inline const RowSource kDisciplineKey{"MeldeDisziplin", "ID", "%1.MeldeKZ & ' ' & %1.MeldeDisziplin"};
inline const RowSource kShooter{"Schützen", "ID", "%1.Startnummer & ' ' & %1.Name", "Startnummer"};

/// A whole number among the values; 0 for none.
inline int whole(const dao::RowValues& values, const QString& column) {
  return values.value(column).toInt();
}

}  // namespace qk::pages

#include "evaluation/print_file.h"

#include "app/ground/print_data.h"
#include "capture/row_values.h"
#include "platform/dao/database.h"

namespace qk {

namespace {

/// "Datei nicht gefunden" alone doesn't tell which, nor where room is missing.
Error mitDateien(const Error& error, const QString& sVorlage) {
  return Error(error.number(), QString("%1\nVorlage: %2\nTemporärer Ordner: %3")
                                   .arg(error.description(), sVorlage, qEnvironmentVariable("temp")));
}

}  // namespace

Druckdatei::Druckdatei(const Workplace& workplace, const QString& sVorlage) : workplace_(workplace) {
  try {
    path_ = kopiereVorlage(workplace, sVorlage, "ZVA");
    db_ = dao::Database::open(path_, dao::OpenOptions{.durable = false});
  } catch (const Error& error) {
    if (!path_.isEmpty()) loescheDatendatei(workplace_, path_);
    throw mitDateien(error, sVorlage);
  }
}

Druckdatei::~Druckdatei() {
  close();
  loescheDatendatei(workplace_, path_);
}

dao::Database& Druckdatei::db() const {
  return required(db_);
}

void Druckdatei::close() {
  db_.reset();
}

}  // namespace qk

// An UPDATE over a join, in pieces.
//
// The classic one brings a large table in line with a small one, and is run again and again though hardly a
// row has changed. So rows that are right already, by any of their partners, aren't written (the dialects see
// to that), what is to be written is looked for without a lock, and is written by a few keys at a time:
// others can store their rows in between.
#pragma once

#include "platform/dao/sql/tree.h"

namespace qk::dao {

class Engine;

/// Runs the resolved statement; the count of rows that it changed. Each piece is a transaction of its own: a
/// failure leaves what was written before it, and running the statement again goes on from there. While it
/// runs it shows the sign of work (work_sign.h).
///
/// In one piece where a piece could see what one before it has written: the table is joined with itself or
/// with a subselect or stored query, or a condition or value asks a select. So too where it has no key of one
/// whole number.
int updateOverJoin(Engine& engine, sql::Update update);

}  // namespace qk::dao

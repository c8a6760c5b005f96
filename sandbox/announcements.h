#pragma once

#include "store.h"

namespace sandbox {

/// Whose money the funds send back.
enum class Refunds { none, firstMember, all };

/// Something is wrong with the money of a batch.
struct PaymentException {
  std::string type;
  std::string message;
  json::object properties;  ///< texts by name: how to pay
};

/// STATUS: the batch has got its status.
void AnnounceStatus(State& state, const Batch& batch);

/// CONTRIBUTION_RESPONSE for every fund of the batch, MEMBER_RESPONSE for its members.
void AnnounceFundAnswers(State& state, const Batch& batch, Refunds refunds);

/// MEMBER_RESPONSE: the fund sends so much back.
void AnnounceRefund(State& state, const Batch& batch, const FundPart& fund, const MemberPart& member,
                    std::int64_t cents, TimePoint when);

/// EXCEPTION
void AnnounceException(State& state, const Batch& batch, const PaymentException& exception, TimePoint when);

/// Money that no batch was found for, with all the ways to pay this one.
PaymentException UnmatchedPayment(const Batch& batch);

}  // namespace sandbox

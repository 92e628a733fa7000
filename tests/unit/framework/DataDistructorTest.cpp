#include "framework/DataDistructor.h"

#include <gtest/gtest.h>

#include <new>

namespace {

// Two plain memory blocks on a list, as the time-sorting block allocates them. The address sanitizer's leak
// check and its check of double frees judge what becomes of them.
DataMessage MessageWithList(std::size_t elements) {
  auto list = std::make_unique<DataDistructorTimeSorting::List>();
  for (std::size_t i = 0; i < elements; ++i) {
    list->push_back(::operator new(64));
  }
  DataMessage message;
  message.word3 = reinterpret_cast<quintptr>(list.release());
  return message;
}

int destructions = 0;

struct Counted {
  ~Counted() { ++destructions; }
};

TEST(DataDistructorTimeSorting, freesEachElementAndTheList) {
  const DataDistructorTimeSorting distructor;
  for (const std::size_t elements : {0U, 1U, 100U}) {
    distructor.Destroy(MessageWithList(elements));
  }
}

TEST(DataDistructorTimeSorting, runsNoDestructorsOfElements) {
  auto list = std::make_unique<DataDistructorTimeSorting::List>();
  list->push_back(new (::operator new(sizeof(Counted))) Counted);
  DataMessage message;
  message.word3 = reinterpret_cast<quintptr>(list.release());
  destructions = 0;
  const DataDistructorTimeSorting distructor;
  distructor.Destroy(message);
  EXPECT_EQ(destructions, 0);
}

TEST(DataDistructorTimeSorting, leavesAMessageWithoutAListAlone) {
  DataMessage message;
  message.word1 = 1;
  message.word4 = 4;
  message.batch = std::make_unique<PayloadBatch>();
  const DataDistructorTimeSorting distructor;
  distructor.Destroy(message);
  EXPECT_NE(message.batch, nullptr);
  EXPECT_EQ(message.word1, 1U);
  EXPECT_EQ(message.word4, 4U);
}

TEST(DataDistructor, isCalledThroughItsBase) {
  struct Remembering final : DataDistructor {
    explicit Remembering(quint64& seen) : seen_(seen) {}
    void Destroy(const DataMessage& message) const override { seen_ = message.word3; }
    quint64& seen_;
  };
  quint64 seen = 0;
  const std::unique_ptr<DataDistructor> distructor = std::make_unique<Remembering>(seen);
  DataMessage message;
  message.word3 = 42;
  distructor->Destroy(message);
  EXPECT_EQ(seen, 42U);
}

}  // namespace

#pragma once
// Everything observable in one include: subscriptions, publishers, published properties,
// subjects and combining.

#include "platform/Cancellable.hpp"
#include "platform/CombineLatest.hpp"
#include "platform/ObservableObject.hpp"
#include "platform/PassthroughSubject.hpp"
#include "platform/Published.hpp"
#include "platform/Publisher.hpp"
#include "platform/SubscriberList.hpp"

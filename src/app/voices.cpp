// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/voices.h"

namespace corvid {

namespace {

constexpr int CollectEvery = 500;  // milliseconds: a notice that a device or service is gone may come late

}  // namespace

Voices::Voices(Timers& timers, Face& face)
    : face_(face),
      collect_(timers.Create([this] { Deliver(); })),
      mixer_({.notice = [mailbox = mailbox_](const std::string& text) { mailbox->Put(text); }}),
      engine(mixer_),
      reader([mailbox = mailbox_](const std::string& text) { mailbox->Put(text); }) {
  collect_->SetInterval(CollectEvery);
  collect_->SetEnabled(true);
}

Voices::~Voices() = default;

void Voices::Mailbox::Put(const std::string& text) {
  const std::lock_guard lock(mutex);
  texts.push_back(text);
}

void Voices::Deliver() {
  std::vector<std::string> texts;
  {
    const std::lock_guard lock(mailbox_->mutex);
    texts.swap(mailbox_->texts);
  }
  for (const std::string& text : texts) face_.Notice(text);
}

}  // namespace corvid

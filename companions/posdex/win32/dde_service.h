#pragma once

#include "common/win32/handle.h"
#include "dde_server.h"
#include "text_service.h"

namespace kestrum::posdex {

// By DDE, to any client that links to "Posdex|form1".
class DdeService : public TextService {
 public:
  DdeService();
  void Start() override;
  void SetTexts(const GpsTexts& texts) override;

 private:
  win32::Handle only_one_;  // the system allows any number of servers of one name
  DdeServer server_;
};

}  // namespace kestrum::posdex

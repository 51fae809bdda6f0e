#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

struct Sample {
  Identity identity;
  // Each sample leaves some errors after its identification request, so that the program's
  // settling of the bus has work to do.
  int requestErrors;
};

Sample SampleOf(Family family) {
  switch (family) {
    case Family::Keld:
      return {{0x0B12, 0x01, 0x07, 0x0012, 2, IdentificationForm::Short}, 2};
    case Family::Quill:
      return {{0x5120, 0x03, 0x01, 0x0101, 4, IdentificationForm::ShortTypeInByte9}, 1};
    case Family::Morlin:
      return {{0x4D31, 0x02, 0x05, 0x0020, 1, IdentificationForm::Short}, 1};
    case Family::KeldPlus:
      return {{0x4B60, 0x01, 0x10, 0x0003, 0x0005, IdentificationForm::Long}, 2};
  }
  return {};
}

}  // namespace

std::unique_ptr<Gauge> MakeSampleGauge(Family family, Clock& clock) {
  const Sample sample = SampleOf(family);
  auto gauge = std::make_unique<Gauge>(family, sample.identity, clock);
  gauge->SetIdentificationRequestErrors(sample.requestErrors);
  return gauge;
}

}  // namespace ombrelay::sim

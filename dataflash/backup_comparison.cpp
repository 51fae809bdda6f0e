#include "dataflash/backup_comparison.h"

#include <map>
#include <set>
#include <tuple>

namespace ombrelay {
namespace {

using Key = std::tuple<std::string, std::string, std::string>;

Key KeyOf(const BackupParameter& parameter) {
  return {parameter.className, parameter.subclassName, parameter.name};
}

std::map<Key, const BackupParameter*> ByKey(const DataflashBackup& backup) {
  std::map<Key, const BackupParameter*> byKey;
  for (const BackupParameter& parameter : backup.parameters)
    byKey.emplace(KeyOf(parameter), &parameter);
  return byKey;
}

bool Same(const BackupParameter& a, const BackupParameter& b) {
  return a.address == b.address && a.type == b.type && a.bytes == b.bytes;
}

std::string ValueText(const std::optional<BackupParameter>& parameter) {
  return parameter ? parameter->value : "(none)";
}

}  // namespace

BackupComparison CompareBackups(const DataflashBackup& before, const DataflashBackup& after) {
  BackupComparison comparison;
  for (const IdentityDifference& difference :
       IdentityDifferences(before.identity, after.identity)) {
    comparison.identity += (comparison.identity.empty() ? "" : ", ") + difference.field + " " +
                           difference.first + " -> " + difference.second;
  }
  const auto beforeByKey = ByKey(before);
  const auto afterByKey = ByKey(after);
  for (const BackupParameter& parameter : before.parameters) {
    const auto found = afterByKey.find(KeyOf(parameter));
    const BackupParameter* other = found == afterByKey.end() ? nullptr : found->second;
    if (other == nullptr || !Same(parameter, *other)) {
      comparison.parameters.push_back(
          {ParameterName(parameter), parameter,
           other ? std::optional<BackupParameter>(*other) : std::nullopt});
    }
  }
  for (const BackupParameter& parameter : after.parameters) {
    if (!beforeByKey.contains(KeyOf(parameter)))
      comparison.parameters.push_back({ParameterName(parameter), std::nullopt, parameter});
  }
  std::set<std::int32_t> rows;
  for (const auto& [row, bytes] : before.rows) {
    const auto other = after.rows.find(row);
    if (other == after.rows.end() || other->second != bytes) rows.insert(row);
  }
  for (const auto& [row, bytes] : after.rows) {
    if (!before.rows.contains(row)) rows.insert(row);
  }
  comparison.rows.assign(rows.begin(), rows.end());
  return comparison;
}

std::string ChangeText(const ParameterChange& change) {
  std::string text = ValueText(change.before) + " -> " + ValueText(change.after);
  if (change.before && change.after && change.before->value == change.after->value)
    text += " [" + HexBytes(change.before->bytes) + " -> " + HexBytes(change.after->bytes) + "]";
  return text;
}

}  // namespace ombrelay

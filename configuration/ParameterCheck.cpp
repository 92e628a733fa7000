#include "configuration/ParameterCheck.h"

#include "configuration/ParameterList.h"
#include "configuration/PositionCheck.h"
#include "configuration/SizeCheck.h"
#include "configuration/Words.h"

namespace korvax {

namespace {

/// A parameter of a type of block whose default isn't what the schema wants: the block can't do without it.
struct Needed {
  QString name;
  QString expected;
};

const SchemaNode* ParameterSchema(const SchemaNode& schema, const QString& blockType) {
  const SchemaNode* node = &schema;
  for (const char* level : {"processing", "filter_chain", "chain"}) {
    node = node->Member(QLatin1String(level))->Elements();
  }
  for (const SchemaNode* applied : node->AppliedTo(QJsonObject{{"block_type", blockType}})) {
    const SchemaNode* const parameters = applied->Member(QStringLiteral("parameters"));
    if (applied != node && parameters != nullptr) {
      return parameters->Elements();
    }
  }
  return nullptr;
}

std::vector<Needed> NeededBy(const SchemaNode& parameters) {
  std::vector<Needed> needed;
  for (const SchemaNode* applied : parameters.AppliedTo(QJsonObject())) {
    const SchemaNode* const names = applied->Member(QStringLiteral("param_name"));
    for (const QString& name : names == nullptr ? QStringList() : names->AllowedTexts()) {
      const auto nodes = parameters.AppliedTo(QJsonObject{{"param_name", name}});
      const SchemaNode* const value = nodes.back()->Member(QStringLiteral("param_value"));
      if (value != nullptr && !value->Default().isUndefined() && !value->IsRight(value->Default())) {
        needed.push_back({name, value->Expected()});
      }
    }
  }
  return needed;
}

void CheckNeeded(const BlockEntry& block, const ParameterList& parameters, const SchemaNode& schema,
                 FindingList& findings) {
  for (const Needed& needed : NeededBy(schema)) {
    if (!parameters.Has(needed.name)) {
      findings.Warn(
          block.path + QStringList{"parameters"},
          QStringLiteral("a parameter ") + Quoted(needed.name) + QStringLiteral(" with ") + needed.expected,
          QStringLiteral("none"));
    }
  }
}

void CheckRepeated(const ParameterList& parameters, FindingList& findings) {
  for (const QStringList& path : parameters.Repeated()) {
    findings.Warn(path, QStringLiteral("each parameter once, as the last value of several counts"),
                  QStringLiteral("one that stands in an earlier entry, too"));
  }
}

void CheckWithoutEffect(const BlockEntry& block, const ParameterList& parameters, FindingList& findings) {
  if (block.type != QLatin1String("time_sorting")) {
    return;
  }
  for (const char* name : {"n_windows", "timestamp_delta"}) {
    if (const auto* const entry = parameters.Find(QLatin1String(name))) {
      findings.Warn(entry->path, QStringLiteral("no such parameter, as hold time and group width are fixed"),
                    ValueText(entry->value));
    }
  }
}

}  // namespace

void CheckParameters(const Layout& layout, const SchemaNode& schema, FindingList& findings) {
  for (const BlockEntry& block : layout.blocks) {
    const ParameterList parameters(block);
    CheckRepeated(parameters, findings);
    CheckWithoutEffect(block, parameters, findings);
    CheckSize(block, parameters, findings);
    CheckPositions(block, parameters, findings);
    if (const SchemaNode* const known = ParameterSchema(schema, block.type)) {
      CheckNeeded(block, parameters, *known, findings);
    }
  }
}

}  // namespace korvax

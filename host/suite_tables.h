// host/suite_tables.h — the tables behind the suites, one maker a family.
#pragma once

namespace host {

const void* handleSuite();
const void* paramUtilsSuite();
const void* appSuite4();
const void* appSuite6();
const void* advAppSuite();
const void* worldSuite();
const void* iterate8Suite();
const void* iterate16Suite();
const void* iterateFloatSuite();
const void* customUiSuite1();
const void* customUiSuite2();
const void* drawbotDrawSuite();
const void* drawbotSupplierSuite();
const void* drawbotSurfaceSuite();
const void* drawbotPathSuite();
const void* aegpUtilitySuite();
const void* aegpMemorySuite();
const void* aegpInterfaceSuite();
const void* aegpEffectSuite();
const void* layerRenderOptionsSuite();
const void* renderAsyncManagerSuite();
const void* renderSuite();
const void* aegpWorldSuite();
const void* appInfoSuite();
const void* messageSuite();
const void* progressSuite();

}  // namespace host

#pragma once
// The demo is a tour of typical requests, one section per capability.

void DemoVectors();
void DemoMatrices();
void DemoAffineDecomposition();
void DemoRotations();
void DemoRotationClass();
void DemoRootsAndRandom();
void DemoSignal();
